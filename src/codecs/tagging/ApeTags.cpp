#include "codecs/tagging/ApeItems.h"
#include "codecs/tagging/Id3v1Values.h"
#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

namespace {

class ApeTags : public TaggedFile {
public:
    explicit ApeTags(const QByteArray& file)
        : Stream(file), Old(Id3v1AtEnd(Stream)), Size(TagsAtEnd(Stream) - Old.size()), Items(ItemsNow()) {}

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }
    bool IsUpToDate(qint16 kind, const TagValues& values) override {
        return ChangesTo(Properties(), values, kind).isEmpty();
    }
    TagEdits Edits(qint16 kind, const TagValues& values) override {
        return EditsOf(ChangesTo(Properties(), values, kind));
    }
    RawFields Raw() override { return Items.Fields() + Id3v1Fields(Old); }

    bool Write(qint16 kind, const TagValues& values) override {
        CheckApeTagSize(Stream);
        const TagLib::PropertyMap now = Properties();
        const TagLib::PropertyMap changes = ChangesTo(now, values, kind);
        Items.Change(changes);
        // An old tag that is there is kept in step, since some programs, a conversion here among them, read
        // only that.
        const qint64 before = Size + Old.size();
        if (!Old.isEmpty()) ChangeId3v1(Old, ValuesOf(now), ValuesOf(Changed(now, changes)));
        const QByteArray tag = Items.Bytes();
        const QByteArray end = tag + Old;
        Stream.Replace(Stream.length() - before, before, end);
        Size = tag.size();
        Stream.CheckWrites();
        return true;
    }

private:
    ApeItems ItemsNow() { return ApeItems(Stream.Bytes(Stream.length() - Old.size() - Size, Size)); }
    TagLib::PropertyMap Properties() {
        TagLib::PropertyMap properties = Items.Properties();
        if (Old.isEmpty()) return properties;
        for (const auto& [key, texts] : ChangesTo({}, ReadId3v1(Old), 1)) {
            if (!properties.contains(key)) properties.insert(key, texts);
        }
        return properties;
    }

    TagStream Stream;
    QByteArray Old;  // the ID3v1 tag
    qint64 Size;     // of the APEv2 tag
    ApeItems Items;
};

}  // namespace

std::unique_ptr<TaggedFile> OpenApeTags(const QByteArray& file) {
    return std::make_unique<ApeTags>(file);
}

}  // namespace Sonmira

#include "codecs/tagging/Mp4Items.h"
#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TaggedFile.h"
#include "platform/Failure.h"

#include <mp4atom.h>
#include <mp4file.h>

#include <algorithm>
#include <functional>
#include <set>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// What an atom says of itself is a variable in TagLib 1 and a function in TagLib 2; std::invoke reads both.
qint64 OffsetOf(const TagLib::MP4::Atom& atom) {
    return std::invoke(&TagLib::MP4::Atom::offset, atom);
}
qint64 LengthOf(const TagLib::MP4::Atom& atom) {
    return std::invoke(&TagLib::MP4::Atom::length, atom);
}
const TagLib::ByteVector& NameIn(const TagLib::MP4::Atom& atom) {
    return std::invoke(&TagLib::MP4::Atom::name, atom);
}
const TagLib::MP4::AtomList& ChildrenOf(const TagLib::MP4::Atom& atom) {
    return std::invoke(&TagLib::MP4::Atom::children, atom);
}

[[noreturn]] void RefuseTag(const QString& reason) {
    throw Failure(FailureNumber::Component, reason);
}

class Mp4Tags : public LibraryFile<TagLib::MP4::File> {
public:
    explicit Mp4Tags(const QByteArray& file) : LibraryFile(file) {
        if (IsValid()) ReadItems();
    }

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Items.Properties()); }

    bool IsUpToDate(qint16 kind, const TagValues& values) override {
        return ChangesTo(Items.Properties(), values, kind).isEmpty();
    }
    TagEdits Edits(qint16 kind, const TagValues& values) override {
        return EditsOf(ChangesTo(Items.Properties(), values, kind));
    }
    RawFields Raw() override { return Items.Fields(); }

    // The library makes room for the list, with a text of the right length in it, and tells all tables of the
    // file; the items themselves are put in as they are.
    bool Write(qint16 kind, const TagValues& values) override {
        if (SizesOf(Stream) != Mp4Sizes::Fit)
            RefuseTag(u"The file is damaged: its parts are not of the size that it says"_s);
        CheckKeepsAll();
        Items.Change(ChangesTo(Items.Properties(), values, kind));
        QByteArray list = Items.Bytes();
        constexpr qsizetype TextHead = 24;
        if (!list.isEmpty() && list.size() < TextHead) {
            list += QByteArray(
                        "\0\0\0\x18"
                        "free",
                        Mp4HeadSize) +
                    QByteArray(TextHead - Mp4HeadSize, '\0');
        }
        TagLib::MP4::Tag& tag = *File.tag();
        const TagLib::MP4::ItemMap items = tag.itemMap();
        for (const auto& [name, item] : items) tag.removeItem(name);
        if (!list.isEmpty()) {
            tag.setItem("\251nam", TagLib::StringList(TagLib::String(
                                       std::string(static_cast<std::size_t>(list.size() - TextHead), 'x'))));
        }
        if (!Saved(File.save())) return false;
        TagLib::MP4::Atoms atoms(&File);
        const TagLib::MP4::Atom* const room = atoms.find("moov", "udta", "meta", "ilst");
        if (room == nullptr || LengthOf(*room) != list.size() + Mp4HeadSize) return false;
        Stream.seek(OffsetOf(*room) + Mp4HeadSize, TagLib::IOStream::Beginning);
        Stream.writeBlock(TagLib::ByteVector(list.constData(), static_cast<unsigned>(list.size())));
        return Saved(true);
    }

private:
    void ReadItems() {
        TagLib::MP4::Atoms atoms(&File);
        const TagLib::MP4::Atom* const list = atoms.find("moov", "udta", "meta", "ilst");
        if (list == nullptr) return;
        qint64 size = Mp4HeadSize;
        for (const TagLib::MP4::Atom* atom : ChildrenOf(*list)) {
            Items.Add({QByteArray(NameIn(*atom).data(), 4), Stream.Bytes(OffsetOf(*atom), LengthOf(*atom))});
            size += LengthOf(*atom);
        }
        IsListWhole = size == LengthOf(*list);
    }

    // The name by which the library knows an item: free-form items have their own inside, and a genre by
    // number becomes one by name.
    TagLib::String NameOf(const TagLib::MP4::Atom& atom) {
        if (NameIn(atom) == "gnre") return {"\251gen", TagLib::String::Latin1};
        if (NameIn(atom) != "----") return {NameIn(atom), TagLib::String::Latin1};
        constexpr qint64 Most = 65536;
        const QByteArray name =
            Mp4FreeName(Stream.Bytes(OffsetOf(atom), std::min<qint64>(LengthOf(atom), Most)));
        return {name.toStdString(), TagLib::String::UTF8};
    }

    // Items that the library cannot make sense of, and two of one name, may be what a damaged size left.
    void CheckKeepsAll() {
        if (!IsListWhole) RefuseTag(u"The tag is damaged, and a save would lose parts"_s);
        TagLib::MP4::Atoms atoms(&File);
        const TagLib::MP4::Atom* const list = atoms.find("moov", "udta", "meta", "ilst");
        if (list == nullptr) return;
        std::set<TagLib::String> seen;
        for (const TagLib::MP4::Atom* atom : ChildrenOf(*list)) {
            if (NameIn(*atom) == "free") continue;
            const TagLib::String name = NameOf(*atom);
            if (!File.tag()->contains(name) || !seen.insert(name).second)
                RefuseTag(u"The file holds a tag of a kind that would be lost"_s);
        }
    }

    Mp4Items Items;
    bool IsListWhole = true;
};

}  // namespace

std::unique_ptr<TaggedFile> OpenMp4Tags(const QByteArray& file) {
    TagStream stream(file);
    if (SizesOf(stream) == Mp4Sizes::TooDeep) return nullptr;
    return TryOpen<Mp4Tags>(file);
}

}  // namespace Sonmira

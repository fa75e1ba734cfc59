#include "codecs/tagging/FlacFileTags.h"

#include "codecs/Id3Block.h"
#include "codecs/InputFile.h"
#include "codecs/tagging/Id3v1Values.h"
#include "codecs/tagging/Id3v2Check.h"
#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/PropertyTags.h"
#include "platform/NativePath.h"

#include <flacfile.h>
#include <id3v1tag.h>

namespace Sonmira {

namespace {

// An ID3v1 tag from its bytes, wherever they lie.
struct Id3v1OfBytes : TagLib::ID3v1::Tag {
    using TagLib::ID3v1::Tag::parse;
};

class FlacFileTags : public PropertyTags<TagLib::FLAC::File> {
public:
    explicit FlacFileTags(const QByteArray& file) : PropertyTags(file, KeepingFrames()) {}

    bool Write(qint16 kind, const TagValues& values) override {
        if (const qint64 size = Id3v2Size(Stream.Bytes(0, 10)); size > 0)
            CheckFramesAreKept(Stream.Bytes(0, size));
        const TagLib::PropertyMap now = File.properties();
        const TagLib::PropertyMap wanted = Changed(now, ChangesTo(now, values, kind));
        // A conversion reads the blocks, too, which must not go on to say what was changed.
        if (File.hasID3v1Tag()) ChangeId3v1(*File.ID3v1Tag(), ValuesOf(now), ValuesOf(wanted));
        File.setProperties(wanted);
        if (!Saved(File.save())) return false;
        ChangeOurBlock(ValuesOf(now), ValuesOf(wanted));
        return Saved(true);
    }

private:
    void ChangeOurBlock(const TagValues& now, const TagValues& wanted) {
        const auto place = Id3BlockPlaceInFlac(InputFile(FromNative(Stream.name())));
        if (!place) return;
        const QByteArray bytes = Stream.Bytes(*place, std::ssize(Id3Block()));
        Id3v1OfBytes tag;
        tag.parse(TagLib::ByteVector(bytes.constData(), static_cast<unsigned>(bytes.size())));
        ChangeId3v1(tag, now, wanted);
        Stream.seek(*place, TagLib::IOStream::Beginning);
        Stream.writeBlock(tag.render());
    }
};

}  // namespace

std::unique_ptr<TaggedFile> OpenFlacFileTags(const QByteArray& file) {
    return TryOpen<FlacFileTags>(file);
}

}  // namespace Sonmira

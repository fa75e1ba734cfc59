#include "codecs/tagging/MpegTags.h"

#include "codecs/tagging/Id3v1Values.h"
#include "codecs/tagging/Id3v2Check.h"
#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/PropertyTags.h"

#include <id3v1tag.h>
#include <id3v2tag.h>
#include <mpegfile.h>

namespace Sonmira {

namespace {

using Library = TagLib::MPEG::File;

class MpegTags : public LibraryFile<Library> {
public:
    explicit MpegTags(const QByteArray& file) : LibraryFile(file, KeepingFrames()) {}

    bool IsValid() { return File.isOpen(); }

    TagValues Read(qint16 kind) override {
        if (kind == 1) return File.hasID3v1Tag() ? ReadId3v1(*File.ID3v1Tag()) : TagValues();
        return ValuesOf(Properties());
    }

    bool Says(qint16 kind, const TagValues& values) override {
        // No tag says nothing as well as an empty one.
        if (kind == 1) return IsSame(Read(kind), values);
        return File.hasID3v2Tag() && ChangesTo(Properties(), values, kind).isEmpty();
    }

    bool Write(qint16 kind, const TagValues& values) override {
        constexpr auto KeepOthers = TagLib::File::StripNone;
        constexpr auto ToEachItsOwn = TagLib::File::DoNotDuplicate;
        if (kind == 1) {
            TagValues now = Read(kind);
            // A new tag says its genre in any case, also the one for "other".
            if (!File.hasID3v1Tag()) now.Genre = -1;
            ChangeId3v1(*File.ID3v1Tag(true), now, values);
            return Saved(File.save(Library::ID3v1, KeepOthers, TagLib::ID3v2::v4, ToEachItsOwn));
        }
        if (File.hasID3v2Tag()) CheckFrontTag();
        const TagLib::PropertyMap changes = ChangesTo(Properties(), values, kind);
        TagLib::ID3v2::Tag& tag = *File.ID3v2Tag(true);
        const auto version = VersionToWrite(tag);
        ChangeFrames(tag, changes);
        return Saved(File.save(Library::ID3v2, KeepOthers, version, ToEachItsOwn));
    }

private:
    static bool IsSame(const TagValues& one, const TagValues& other) {
        return one.Title == other.Title && one.Artist == other.Artist && one.Album == other.Album &&
               one.Comment == other.Comment && one.Genre == other.Genre && one.Year == other.Year &&
               one.Track == other.Track;
    }
    void CheckFrontTag() {
        constexpr qint64 Enough = 1 << 16;
        const QByteArray tag = Stream.Bytes(0, Id3v2Size(Stream.Bytes(0, 10)));
        CheckFramesAreKept(tag);
        CheckSoundFollows(Stream.Bytes(tag.size(), Enough));
    }
    TagLib::PropertyMap Properties() {
        return File.hasID3v2Tag() ? File.ID3v2Tag()->properties() : TagLib::PropertyMap();
    }
};

}  // namespace

std::unique_ptr<TaggedFile> OpenMpegTags(const QByteArray& file) {
    return TryOpen<MpegTags>(file);
}

}  // namespace Sonmira

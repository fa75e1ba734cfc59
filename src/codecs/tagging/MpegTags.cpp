#include "codecs/tagging/Id3v1Values.h"
#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/Id3v2Parsing.h"
#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TaggedFile.h"
#include "platform/Failure.h"

#include <id3v2framefactory.h>
#include <id3v2tag.h>
#include <mpegfile.h>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// Who makes the frames has to be said in TagLib 1, and goes without saying in TagLib 2.
#if TAGLIB_MAJOR_VERSION >= 2
using MpegFile = LibraryFile<TagLib::MPEG::File>;
#else
class MpegFile : public LibraryFile<TagLib::MPEG::File> {
public:
    explicit MpegFile(const QByteArray& file) : LibraryFile(file, TagLib::ID3v2::FrameFactory::instance()) {}
};
#endif

class MpegTags : public MpegFile {
public:
    explicit MpegTags(const QByteArray& file)
        : MpegFile(file), FrontSize(Id3v2Size(Stream.Bytes(0, 10))), Old(Id3v1AtEnd(Stream)) {
        if (FrontSize > 0) Front = Id3v2Frames::Parse(Stream.Bytes(0, FrontSize));
    }

    bool IsValid() { return File.isOpen(); }

    TagValues Read(qint16 kind) override {
        if (kind == 1) return Old.isEmpty() ? TagValues() : ReadId3v1(Old);
        return ValuesOf(Properties());
    }

    bool IsUpToDate(qint16 kind, const TagValues& values) override {
        // No tag says nothing as well as an empty one.
        if (kind == 1) return IsSame(Read(kind), values);
        return (Front || File.hasID3v2Tag()) && ChangesTo(Properties(), values, kind).isEmpty();
    }

    TagEdits Edits(qint16 kind, const TagValues& values) override {
        if (kind == 1) return EditsOfId3v1(Read(kind), values);
        return EditsOf(ChangesTo(Properties(), values, kind));
    }

    RawFields Raw() override {
        RawFields fields = Id3v1Fields(Old);
        if (Front) {
            fields += Front->Fields();
        } else if (FrontSize > 0) {
            fields.append({"ID3v2", {}, Stream.Bytes(0, FrontSize)});
        }
        return fields;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        return Saved(kind == 1 ? WriteOld(values) : WriteFront(kind, values));
    }

private:
    static bool IsSame(const TagValues& one, const TagValues& other) {
        return one.Title == other.Title && one.Artist == other.Artist && one.Album == other.Album &&
               one.Comment == other.Comment && one.Genre == other.Genre && one.Year == other.Year &&
               one.Track == other.Track;
    }
    TagLib::PropertyMap Properties() {
        if (Front) return Front->Properties();
        return File.hasID3v2Tag() ? File.ID3v2Tag()->properties() : TagLib::PropertyMap();
    }

    bool WriteOld(const TagValues& values) {
        TagValues now = Read(1);
        // A new tag says its genre in any case, also the one for "other".
        if (Old.isEmpty()) now.Genre = -1;
        QByteArray tag = Old.isEmpty() ? EmptyId3v1() : Old;
        ChangeId3v1(tag, now, values);
        // The track that every save fills in is passed over there; one that was asked for is not.
        if (IsTrackCrowdedOut(tag) && values.Track != now.Track && values.Track > 1)
            throw Failure(FailureNumber::Component, u"The comment of the tag leaves no place for a track"_s);
        Stream.Replace(Stream.length() - Old.size(), Old.size(), tag);
        Old = tag;
        return true;
    }

    bool WriteFront(qint16 kind, const TagValues& values) {
        const TagLib::PropertyMap changes = ChangesTo(Properties(), values, kind);
        if (FrontSize > 0 || File.hasID3v2Tag()) CheckFrontTag();
        if (!Front) Front.emplace();
        Front->Change(changes);
        const QByteArray tag = Front->All().isEmpty() ? QByteArray() : Front->Bytes(FrontSize);
        Stream.Replace(0, FrontSize, tag);
        FrontSize = tag.size();
        return true;
    }
    void CheckFrontTag() {
        constexpr qint64 Enough = 1 << 16;
        CheckFramesAreKept(Stream.Bytes(0, FrontSize));
        CheckSoundFollows(Stream.Bytes(FrontSize, Enough));
    }

    qint64 FrontSize;
    std::optional<Id3v2Frames> Front;
    QByteArray Old;  // the ID3v1 tag at the end
};

}  // namespace

std::unique_ptr<TaggedFile> OpenMpegTags(const QByteArray& file) {
    return TryOpen<MpegTags>(file);
}

}  // namespace Sonmira

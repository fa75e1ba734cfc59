#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TaggedFile.h"
#include "codecs/tagging/VorbisComments.h"
#include "platform/Failure.h"

#include <oggflacfile.h>
#include <opusfile.h>
#include <vorbisfile.h>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// The packet with the comments, and what stands before them in it.
struct CommentPacket {
    unsigned Number;
    QByteArray Head;
    std::optional<VorbisComments> Comments;  // none where there is no such packet
};

QByteArray PacketOf(TagLib::Ogg::File& file, unsigned number) {
    const TagLib::ByteVector packet = file.packet(number);
    return {packet.data(), static_cast<qsizetype>(packet.size())};
}

CommentPacket CommentsBehind(TagLib::Ogg::File& file, unsigned number, qsizetype headSize) {
    const QByteArray packet = PacketOf(file, number);
    const qsizetype size = std::min(headSize, packet.size());
    return {number, packet.first(size), VorbisComments(packet.sliced(size))};
}

CommentPacket CommentsOf(TagLib::Ogg::Vorbis::File& file) {
    return CommentsBehind(file, 1, 7);
}
CommentPacket CommentsOf(TagLib::Ogg::Opus::File& file) {
    return CommentsBehind(file, 1, 8);
}
CommentPacket CommentsOf(TagLib::Ogg::FLAC::File& file) {
    constexpr unsigned MostPackets = 1000;
    constexpr char CommentKind = 4;
    for (unsigned number = 1; number < MostPackets; ++number) {
        const QByteArray packet = PacketOf(file, number);
        if (packet.size() < 4) break;
        if ((packet[0] & 0x7F) == CommentKind) return CommentsBehind(file, number, 4);
        if ((packet[0] & 0x80) != 0) break;
    }
    return {0, {}, {}};
}

void TellSize(const TagLib::Ogg::File&, QByteArray&, qsizetype) {}
// Blocks of FLAC tell their size, here too.
void TellSize(const TagLib::Ogg::FLAC::File&, QByteArray& head, qsizetype size) {
    if (size >= 1 << 24) throw Failure(FailureNumber::Component, u"The tag would be too large"_s);
    for (int n = 0; n < 3; ++n) head[1 + n] = static_cast<char>(size >> (16 - 8 * n));
}

template <class Library>
class OggTags : public LibraryFile<Library> {
public:
    explicit OggTags(const QByteArray& file) : LibraryFile<Library>(file) {
        if (this->IsValid()) Packet = CommentsOf(this->File);
    }

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }
    bool IsUpToDate(qint16 kind, const TagValues& values) override {
        return ChangesTo(Properties(), values, kind).isEmpty();
    }
    TagEdits Edits(qint16 kind, const TagValues& values) override {
        return EditsOf(ChangesTo(Properties(), values, kind));
    }
    RawFields Raw() override { return Packet.Comments ? Packet.Comments->Fields() : RawFields(); }

    bool Write(qint16 kind, const TagValues& values) override {
        if (!Packet.Comments || !Packet.Comments->IsWhole())
            throw Failure(FailureNumber::Component, u"The tag is damaged, and a save would lose parts"_s);
        Packet.Comments->Change(ChangesTo(Properties(), values, kind));
        const QByteArray block = Packet.Comments->Block();
        TellSize(this->File, Packet.Head, block.size());
        const QByteArray packet = Packet.Head + block;
        this->File.setPacket(Packet.Number,
                             TagLib::ByteVector(packet.constData(), static_cast<unsigned>(packet.size())));
        return this->Saved(this->File.TagLib::Ogg::File::save());
    }

private:
    TagLib::PropertyMap Properties() const {
        return Packet.Comments ? Packet.Comments->Properties() : TagLib::PropertyMap();
    }

    CommentPacket Packet{0, {}, {}};
};

}  // namespace

std::unique_ptr<TaggedFile> OpenOggTags(const QByteArray& file) {
    if (auto vorbis = TryOpen<OggTags<TagLib::Ogg::Vorbis::File>>(file)) return vorbis;
    if (auto flac = TryOpen<OggTags<TagLib::Ogg::FLAC::File>>(file)) return flac;
    return TryOpen<OggTags<TagLib::Ogg::Opus::File>>(file);
}

}  // namespace Sonmira

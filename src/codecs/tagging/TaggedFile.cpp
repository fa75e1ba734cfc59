#include "codecs/tagging/TaggedFile.h"

#include "codecs/Descriptor.h"
#include "codecs/tagging/ApeTags.h"
#include "codecs/tagging/AsfTags.h"
#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/Mp4Tags.h"
#include "codecs/tagging/MpegTags.h"
#include "codecs/tagging/WavTags.h"

#include <apefile.h>
#include <fcntl.h>
#include <flacfile.h>
#include <mpcfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <unistd.h>
#include <vorbisfile.h>

#include <algorithm>

namespace Sonmira {

namespace {

// What a file begins with, behind an ID3v2 tag if there is one.
QByteArray Beginning(const QByteArray& file) {
    constexpr qint64 Enough = 16;
    const Descriptor handle(open(file.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    QByteArray bytes(Enough, '\0');
    const auto readAt = [&](qint64 offset) {
        const ssize_t count = pread(handle.Number(), bytes.data(), Enough, offset);
        return count < 0 ? 0 : count;
    };
    const ssize_t count = readAt(0);
    if (!bytes.startsWith("ID3")) return bytes.first(count);
    qint64 size = 10;
    // Four bytes of seven bits each.
    for (int n = 0; n < 4; ++n) size += qint64{bytes[6 + n] & 0x7F} << (21 - 7 * n);
    return bytes.first(readAt(size));
}

}  // namespace

std::unique_ptr<TaggedFile> OpenTagged(const QByteArray& file, const QByteArray& name) {
    const QByteArray beginning = Beginning(file);
    const auto holdsAt = [&](qsizetype place, const char* mark) {
        return beginning.sliced(std::min(place, beginning.size())).startsWith(mark);
    };
    if (holdsAt(0, "fLaC")) return TryOpen<PropertyTags<TagLib::FLAC::File>>(file, KeepingFrames());
    if (holdsAt(0, "OggS")) {
        if (auto vorbis = TryOpen<PropertyTags<TagLib::Ogg::Vorbis::File>>(file)) return vorbis;
        if (auto flac = TryOpen<PropertyTags<TagLib::Ogg::FLAC::File>>(file)) return flac;
        return TryOpen<PropertyTags<TagLib::Ogg::Opus::File>>(file);
    }
    if (holdsAt(0, "\x30\x26\xB2\x75")) return OpenAsfTags(file);
    if (holdsAt(0, "RIFF") && holdsAt(8, "WAVE")) return OpenWavTags(file);
    if (holdsAt(0, "MAC ")) return TryOpen<ApeTags<TagLib::APE::File>>(file);
    if (holdsAt(0, "MP+") || holdsAt(0, "MPCK")) return TryOpen<ApeTags<TagLib::MPC::File>>(file);
    if (holdsAt(4, "ftyp")) return OpenMp4Tags(file);
    // MPEG audio has no mark of its own that could be trusted: there the ending has the word.
    const QByteArray lower = name.toLower();
    for (const char* ending : {".mp3", ".mp2", ".mp1", ".aac"}) {
        if (lower.endsWith(ending)) return OpenMpegTags(file);
    }
    return nullptr;
}

}  // namespace Sonmira

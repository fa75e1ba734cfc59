#include "codecs/read/MediaFormats.h"

#include "codecs/sound/Id3v2Head.h"
#include "platform/InputFile.h"

#include <QByteArray>

extern "C" {
#include <libavformat/avformat.h>
}

namespace Sonmira {

namespace {

// The search looks at 1 MiB at most, and needs some of it behind the tag.
constexpr qint64 LongTag = 512LL * 1024;
constexpr qsizetype LookedAt = 256L * 1024;
// Hundreds of frames, which are known for what they are.
constexpr qint64 FewFrames = 64LL * 1024;

// Bytes of the ADTS frame at that place, by its head of seven bytes; 0 for none.
qsizetype AdtsFrameAt(const QByteArray& bytes, qsizetype at) {
    constexpr qsizetype headSize = 7;
    if (at + headSize > bytes.size()) return 0;
    const auto byte = [&](qsizetype place) { return static_cast<quint8>(bytes[at + place]); };
    const bool isSync = byte(0) == 0xFF && (byte(1) & 0xF6) == 0xF0;
    const qsizetype size = (byte(3) & 3) << 11 | byte(4) << 3 | byte(5) >> 5;
    return isSync && size > headSize ? size : 0;
}

// Frames that follow each other to the end or to a tag.
bool IsAdts(const QByteArray& bytes) {
    qsizetype at = 0;
    while (const qsizetype size = AdtsFrameAt(bytes, at)) at += size;
    const QByteArray rest = bytes.mid(at);
    return at > 0 && (at == bytes.size() || rest.startsWith("TAG") || rest.startsWith("APETAGEX"));
}

const AVInputFormat* FormatOf(QByteArray bytes) {
    const auto size = static_cast<int>(bytes.size());
    bytes.append(AVPROBE_PADDING_SIZE, '\0');
    AVProbeData data = {};
    data.filename = "";
    data.buf = reinterpret_cast<unsigned char*>(bytes.data());
    data.buf_size = size;
    int score = 0;
    return av_probe_input_format3(&data, 1, &score);
}

}  // namespace

const char* const MediaFormatNames =
    "aac,ac3,aiff,amr,ape,asf,au,avi,caf,dts,eac3,flac,flv,loas,matroska,mov,mp3,mpc,mpc8,mpeg,mpegts,"
    "nistsphere,ogg,rm,tak,tta,w64,wav,wv,xwma";

const AVInputFormat* HiddenMediaFormat(const InputFile& file) {
    const qint64 start = BehindId3v2(file);
    if (file.Size() - start <= FewFrames && IsAdts(BytesAt(file, start, FewFrames))) {
        return av_find_input_format("aac");
    }
    return start > LongTag ? FormatOf(BytesAt(file, start, LookedAt)) : nullptr;
}

}  // namespace Sonmira

#include "codecs/read/MediaInput.h"

#include "codecs/sound/Id3v2Head.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Handles.h"

#include <QByteArray>

#include <cerrno>
#include <cstdio>
#include <mutex>
#include <string_view>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

namespace Sonmira {

using namespace Qt::StringLiterals;

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

namespace {

constexpr int BufferSize = 64 * 1024;
constexpr std::size_t MostOfOneAllocation = 256UL * 1024 * 1024;
// PCM in a WAV file may be another format in disguise, such as DTS. A few frames of that show it; by itself
// the library tries its whole list of formats on the first five megabytes, longer than it reads a song.
constexpr int64_t BytesToKnowPcm = 128L * 1024;
// Broken containers may fail at one packet and go on with the next; those that only fail end here.
constexpr int MostFailuresInARow = 64;

void SetUpLibraries() {
    static std::once_flag once;
    std::call_once(once, [] {
        av_log_set_level(AV_LOG_QUIET);
        av_max_alloc(MostOfOneAllocation);
    });
}

// The file as FFmpeg's input layer wants it.
struct InputState {
    std::shared_ptr<const InputFile> File;
    qint64 Position = 0;
    int Error = 0;  // errno of the first failed reading
};

int ReadPacket(void* opaque, uint8_t* target, int size) {
    auto& state = *static_cast<InputState*>(opaque);
    const auto room = static_cast<std::size_t>(size);
    const auto count = state.File->ReadAt(state.Position, std::as_writable_bytes(std::span(target, room)));
    if (count < 0) {
        state.Error = static_cast<int>(-count);
        return AVERROR(state.Error);
    }
    if (count == 0) return AVERROR_EOF;
    state.Position += count;
    return static_cast<int>(count);
}

int64_t Seek(void* opaque, int64_t offset, int whence) {
    auto& state = *static_cast<InputState*>(opaque);
    switch (whence & ~AVSEEK_FORCE) {
        case AVSEEK_SIZE:
            return state.File->Size();
        case SEEK_SET:
            break;
        case SEEK_CUR:
            offset += state.Position;
            break;
        case SEEK_END:
            offset += state.File->Size();
            break;
        default:
            return AVERROR(EINVAL);
    }
    if (offset < 0) return AVERROR(EINVAL);
    return state.Position = offset;
}

int RefuseOtherFiles(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EPERM);
}

// The buffer may have been replaced by the library: what the context holds at the end is what to free.
void FreeInputLayer(AVIOContext* layer) {
    av_freep(static_cast<void*>(&layer->buffer));
    avio_context_free(&layer);
}

CHandle<AVIOContext, FreeInputLayer> MakeInputLayer(InputState& state) {
    CHandle<void, av_free> buffer(av_malloc(BufferSize));
    if (!buffer) throw MediaFailure(AVERROR(ENOMEM));
    CHandle<AVIOContext, FreeInputLayer> layer(avio_alloc_context(
        static_cast<unsigned char*>(buffer.get()), BufferSize, 0, &state, ReadPacket, nullptr, Seek));
    if (!layer) throw MediaFailure(AVERROR(ENOMEM));
    static_cast<void>(buffer.release());
    return layer;
}

class Options {
public:
    explicit Options(MediaInput::Times times) {
        // Demuxers that open files by themselves look here rather than at io_open.
        av_dict_set(&Values, "protocol_whitelist", "none", 0);
        av_dict_set(&Values, "format_whitelist", MediaFormatNames, 0);
        // PCM in larger packets than the usual 4 KB, of which each costs as much as its copying.
        av_dict_set(&Values, "max_size", "65536", 0);
        if (times == MediaInput::Times::Whole) av_dict_set(&Values, "advanced_editlist", "0", 0);
    }
    ~Options() { av_dict_free(&Values); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;
    AVDictionary* Values = nullptr;
};

}  // namespace

class MediaInput::Parts {
public:
    Parts(const std::shared_ptr<const InputFile>& file, Times times)
        : State{file}, Layer(MakeInputLayer(State)) {
        AVFormatContext* context = avformat_alloc_context();
        if (context == nullptr) throw MediaFailure(AVERROR(ENOMEM));
        context->pb = Layer.get();
        context->io_open = RefuseOtherFiles;
        Options options(times);
        // A failed opening frees the context by itself.
        const int code = avformat_open_input(&context, nullptr, HiddenMediaFormat(*file), &options.Values);
        if (code < 0) throw FailureOf(code == AVERROR(EINVAL) ? AVERROR_INVALIDDATA : code);
        Context.reset(context);
        CheckIsOpen(*context);
        if (std::string_view(context->iformat->name) == "wav") context->probesize = BytesToKnowPcm;
        FindSound();
    }

    Failure FailureOf(int code) const {
        return State.Error != 0 ? ReadingFailure(State.Error) : MediaFailure(code);
    }

    InputState State;
    CHandle<AVIOContext, FreeInputLayer> Layer;
    CHandleByAddress<AVFormatContext, avformat_close_input> Context;
    AVStream* Sound = nullptr;

private:
    // The demuxer of Windows Media reads files for which one needs a key, and gives noise.
    static void CheckIsOpen(const AVFormatContext& context) {
        for (const char* key : {"encryption", "ASF_Protection_Type", "ASF_Key_ID", "ASF_License_URL"}) {
            if (av_dict_get(context.metadata, key, nullptr, 0) == nullptr) continue;
            throw Failure(FailureNumber::Component, u"The file is protected against copying"_s);
        }
    }

    void FindSound() {
        const int code = avformat_find_stream_info(Context.get(), nullptr);
        if (code < 0) throw FailureOf(code);
        const int stream = av_find_best_stream(Context.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
        if (stream < 0) throw FailureOf(stream);
        for (unsigned i = 0; i < Context->nb_streams; ++i) {
            if (static_cast<int>(i) != stream) Context->streams[i]->discard = AVDISCARD_ALL;
        }
        Sound = Context->streams[stream];
    }
};

MediaInput::MediaInput(std::shared_ptr<const InputFile> file, Times times) : Source(std::move(file)) {
    SetUpLibraries();
    Libraries = std::make_unique<Parts>(Source, times);
}

MediaInput::~MediaInput() = default;

bool MediaInput::Read(AVPacket& packet) {
    int failures = 0;
    while (failures < MostFailuresInARow) {
        const int code = av_read_frame(Libraries->Context.get(), &packet);
        if (code == AVERROR_EOF) return false;
        if (Libraries->State.Error != 0) throw ReadingFailure(Libraries->State.Error);
        if (code == AVERROR(ENOMEM)) throw MediaFailure(code);
        if (code < 0) {
            ++failures;
            continue;
        }
        // An empty packet would tell the decoder that the stream ends.
        if (packet.stream_index == Libraries->Sound->index && packet.size > 0) return true;
        av_packet_unref(&packet);
    }
    return false;
}

const AVFormatContext& MediaInput::Container() const {
    return *Libraries->Context;
}

const AVStream& MediaInput::Sound() const {
    return *Libraries->Sound;
}

bool IsWma(const MediaInput& input) {
    switch (input.Sound().codecpar->codec_id) {
        case AV_CODEC_ID_WMAV1:
        case AV_CODEC_ID_WMAV2:
        case AV_CODEC_ID_WMAPRO:
        case AV_CODEC_ID_WMALOSSLESS:
        case AV_CODEC_ID_WMAVOICE:
            return true;
        default:
            return std::string_view(input.Container().iformat->name) == "asf";
    }
}

Failure MediaFailure(int code) {
    switch (code) {
        case AVERROR_STREAM_NOT_FOUND:
            return {FailureNumber::Component, u"No sound in this file"_s};
        case AVERROR_DECODER_NOT_FOUND:
        case AVERROR_PATCHWELCOME:
            return {FailureNumber::Component, u"The sound of this file is in a form that cannot be read"_s};
        case AVERROR(ENOMEM):
            return {FailureNumber::Component, u"Not enough memory for this file"_s};
        case AVERROR(EPERM):
            return {FailureNumber::Component, u"This is a list of files, not sound"_s};
        default:
            return {FailureNumber::Component, u"The file is damaged or no sound file"_s};
    }
}

}  // namespace Sonmira

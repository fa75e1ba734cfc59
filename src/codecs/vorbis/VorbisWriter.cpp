#include "codecs/vorbis/VorbisWriter.h"

#include "codecs/sound/AudioBlock.h"
#include "platform/Failure.h"

#include <vorbis/codec.h>
#include <vorbis/vorbisenc.h>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// How much the library is given at a time: it analyses in pieces of this size anyway, and its own buffer
// stays small.
constexpr std::size_t FramesAtATime = 1024;
// Tells the streams of a multiplexed file apart; ours has one. Always the same, so that equal sound gives
// equal files.
constexpr int SerialNumber = 0x536F6E6D;

Failure VorbisFailure(int code) {
    switch (code) {
        case OV_EIMPL:
        case OV_EINVAL:
            return {FailureNumber::Component, u"Ogg Vorbis has no such format"_s};
        default:
            return {FailureNumber::Component, u"The Ogg Vorbis encoder failed"_s};
    }
}

int Checked(int code) {
    if (code < 0) throw VorbisFailure(code);
    return code;
}

std::span<const std::byte> BytesAt(const unsigned char* data, long size) {
    return std::as_bytes(std::span(data, static_cast<std::size_t>(size)));
}

// The encoder library's structures point at each other: none of them may move.
class Info {
public:
    explicit Info(const VorbisFormat& format) {
        vorbis_info_init(&Value);
        if (const int code = SetUp(format); code != 0) {
            vorbis_info_clear(&Value);
            throw VorbisFailure(code);
        }
    }
    ~Info() { vorbis_info_clear(&Value); }
    Info(const Info&) = delete;
    Info& operator=(const Info&) = delete;

    vorbis_info Value = {};

private:
    int SetUp(const VorbisFormat& format) {
        const long channels = format.Channels;
        const long rate = format.Rate;
        if (format.Quality) {
            const float quality = static_cast<float>(*format.Quality) / 1000.0F;
            return vorbis_encode_init_vbr(&Value, channels, rate, quality);
        }
        const auto bits = [](std::optional<int> kilobits) {
            return kilobits && *kilobits > 0 ? *kilobits * 1000L : -1L;
        };
        const long least = bits(format.Minimum);
        const long most = bits(format.Maximum);
        const int code =
            vorbis_encode_setup_managed(&Value, channels, rate, most, bits(format.Nominal), least);
        if (code != 0) return code;
        // A rate that is a mere target is held without the bookkeeping of limits, at a fifth of the time.
        if (least < 0 && most < 0) {
            const int unmanaged = vorbis_encode_ctl(&Value, OV_ECTL_RATEMANAGE2_SET, nullptr);
            if (unmanaged != 0) return unmanaged;
        }
        return vorbis_encode_setup_init(&Value);
    }
};

class Analysis {
public:
    explicit Analysis(Info& info) { Checked(-std::abs(vorbis_analysis_init(&Value, &info.Value))); }
    ~Analysis() { vorbis_dsp_clear(&Value); }
    Analysis(const Analysis&) = delete;
    Analysis& operator=(const Analysis&) = delete;

    vorbis_dsp_state Value = {};
};

class Block {
public:
    explicit Block(Analysis& analysis) { Checked(vorbis_block_init(&analysis.Value, &Value)); }
    ~Block() { vorbis_block_clear(&Value); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    vorbis_block Value = {};
};

class Comments {
public:
    Comments() { vorbis_comment_init(&Value); }
    ~Comments() { vorbis_comment_clear(&Value); }
    Comments(const Comments&) = delete;
    Comments& operator=(const Comments&) = delete;

    vorbis_comment Value = {};
};

class Pages {
public:
    Pages() { Checked(ogg_stream_init(&Value, SerialNumber)); }
    ~Pages() { ogg_stream_clear(&Value); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    ogg_stream_state Value = {};
};

}  // namespace

class VorbisWriter::Encoder {
public:
    explicit Encoder(const VorbisFormat& format)
        : Settings(format),
          State(Settings),
          Work(State),
          Channels(static_cast<std::size_t>(format.Channels)) {}

    void WriteHeaders(OutputFile& file) {
        Comments comments;
        ogg_packet identification = {};
        ogg_packet comment = {};
        ogg_packet codebooks = {};
        Checked(
            vorbis_analysis_headerout(&State.Value, &comments.Value, &identification, &comment, &codebooks));
        for (ogg_packet* packet : {&identification, &comment, &codebooks}) {
            Checked(ogg_stream_packetin(&Stream.Value, packet));
        }
        // The first packet of sound must begin a page.
        ogg_page page = {};
        while (ogg_stream_flush(&Stream.Value, &page) != 0) WritePage(page, file);
        HeadersWritten = true;
    }

    void Encode(std::span<const float> samples, OutputFile& file) {
        if (!HeadersWritten) WriteHeaders(file);
        while (!samples.empty()) {
            const std::size_t now = std::min(samples.size() / Channels, FramesAtATime);
            float** channels = vorbis_analysis_buffer(&State.Value, static_cast<int>(now));
            for (std::size_t channel = 0; channel < Channels; ++channel) {
                for (std::size_t frame = 0; frame < now; ++frame) {
                    channels[channel][frame] = samples[frame * Channels + channel];
                }
            }
            Checked(vorbis_analysis_wrote(&State.Value, static_cast<int>(now)));
            Drain(file);
            samples = samples.subspan(now * Channels);
        }
    }

    void Finish(OutputFile& file) {
        if (!HeadersWritten) WriteHeaders(file);
        Checked(vorbis_analysis_wrote(&State.Value, 0));
        Drain(file);
    }

private:
    void Drain(OutputFile& file) {
        while (Checked(vorbis_analysis_blockout(&State.Value, &Work.Value)) == 1) {
            Checked(vorbis_analysis(&Work.Value, nullptr));
            Checked(vorbis_bitrate_addblock(&Work.Value));
            ogg_packet packet = {};
            while (Checked(vorbis_bitrate_flushpacket(&State.Value, &packet)) == 1) {
                Checked(ogg_stream_packetin(&Stream.Value, &packet));
                ogg_page page = {};
                // The first frames of sound get a page of their own. Readers take the place of the first
                // sample from the first page, which must not be the last one too: that one tells the end.
                const bool tellsPlace = packet.granulepos > 0 && packet.e_o_s == 0;
                if (!FirstPageWritten && tellsPlace && ogg_stream_flush(&Stream.Value, &page) != 0) {
                    WritePage(page, file);
                    FirstPageWritten = true;
                }
                while (ogg_stream_pageout(&Stream.Value, &page) != 0) WritePage(page, file);
            }
        }
    }

    static void WritePage(const ogg_page& page, OutputFile& file) {
        file.Write(BytesAt(page.header, page.header_len));
        file.Write(BytesAt(page.body, page.body_len));
    }

    Info Settings;
    Analysis State;
    Block Work;
    Pages Stream;
    std::size_t Channels;
    bool HeadersWritten = false;
    bool FirstPageWritten = false;
};

bool IsVorbisFormat(const VorbisFormat& format) {
    if (format.Channels < 1 || format.Channels > 2 || format.Rate < 1) return false;
    if (format.Quality && (*format.Quality < 0 || *format.Quality > 1000)) return false;
    return PassOver([&] { const Info info(format); });
}

VorbisWriter::VorbisWriter(const VorbisFormat& format) : Stream(std::make_unique<Encoder>(format)) {}

VorbisWriter::~VorbisWriter() = default;

void VorbisWriter::Write(const AudioBlock& block, OutputFile& file) {
    Stream->Encode(LimitedFloatsOf(block), file);
}

void VorbisWriter::Finish(OutputFile& file) {
    Stream->Finish(file);
}

}  // namespace Sonmira

#include "codecs/flac/FlacSegment.h"

#include "codecs/flac/FlacFrame.h"
#include "platform/CHandle.h"
#include "platform/Failure.h"

#include <FLAC/stream_encoder.h>

#include <algorithm>
#include <cmath>

// In the library since its first versions, but in none of its headers. The stream has one sum over all of its
// segments: one for each would be work for nothing.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is the library's.
extern "C" FLAC__bool FLAC__stream_encoder_set_do_md5(FLAC__StreamEncoder* encoder, FLAC__bool value);

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// Long enough that setting the encoder up costs nothing beside it, short enough that a song has several for
// each core.
constexpr std::size_t LeastSegmentLength = std::size_t{1} << 18;
constexpr std::size_t FramesAtATime = 4096;

Failure EncoderFailure() {
    return {FailureNumber::Component, u"The FLAC encoder failed"_s};
}

// What any player of the format must be able to play.
bool IsInSubset(int rate) {
    return rate <= 65535 || (rate <= 655350 && rate % 10 == 0);
}

// The library's output: each call is one FLAC frame, but for those of headers, which have no sound.
struct Output {
    FlacSegment Segment;
    std::uint32_t Number = 0;
};

FLAC__StreamEncoderWriteStatus Write(const FLAC__StreamEncoder* /*encoder*/, const FLAC__byte bytes[],
                                     size_t count, uint32_t samples, uint32_t /*frame*/, void* client) {
    if (samples == 0) return FLAC__STREAM_ENCODER_WRITE_STATUS_OK;
    Output& output = *static_cast<Output*>(client);
    try {
        FlacSegment& segment = output.Segment;
        const std::size_t before = segment.Frames.size();
        AppendRenumbered(std::as_bytes(std::span(bytes, count)), output.Number++, segment.Frames);
        segment.FrameSizes.push_back(static_cast<std::uint32_t>(segment.Frames.size() - before));
        return FLAC__STREAM_ENCODER_WRITE_STATUS_OK;
    } catch (const std::exception&) {
        return FLAC__STREAM_ENCODER_WRITE_STATUS_FATAL_ERROR;
    }
}

template <int Bytes>
FLAC__int32 SampleAt(const std::byte* at) {
    std::uint32_t bits = 0;
    for (int i = 0; i < Bytes; ++i) bits |= std::to_integer<std::uint32_t>(at[i]) << (8 * (4 - Bytes + i));
    return static_cast<FLAC__int32>(bits) >> (8 * (4 - Bytes));
}

template <int Bytes>
void UnpackAs(std::span<const std::byte> pcm, std::vector<FLAC__int32>& samples) {
    samples.resize(pcm.size() / Bytes);
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = SampleAt<Bytes>(pcm.data() + i * Bytes);
}

void Unpack(std::span<const std::byte> pcm, int bits, std::vector<FLAC__int32>& samples) {
    switch (bits) {
        case 8:
            return UnpackAs<1>(pcm, samples);
        case 16:
            return UnpackAs<2>(pcm, samples);
        default:
            return UnpackAs<3>(pcm, samples);
    }
}

void SetUp(FLAC__StreamEncoder* encoder, const FlacFormat& format) {
    const bool accepted =
        FLAC__stream_encoder_set_compression_level(encoder, static_cast<uint32_t>(format.Level)) != 0 &&
        FLAC__stream_encoder_set_blocksize(encoder, static_cast<uint32_t>(FlacBlockSize(format))) != 0 &&
        FLAC__stream_encoder_set_sample_rate(encoder, static_cast<uint32_t>(format.Rate)) != 0 &&
        FLAC__stream_encoder_set_channels(encoder, static_cast<uint32_t>(format.Channels)) != 0 &&
        FLAC__stream_encoder_set_bits_per_sample(encoder, static_cast<uint32_t>(format.Bits)) != 0 &&
        FLAC__stream_encoder_set_streamable_subset(encoder, static_cast<int>(IsInSubset(format.Rate))) != 0 &&
        FLAC__stream_encoder_set_do_md5(encoder, 0) != 0;
    if (!accepted) throw EncoderFailure();
}

}  // namespace

int FlacBlockSize(const FlacFormat& format) {
    return format.Level <= 2 ? 1152 : 4096;
}

std::size_t FlacSegmentLength(const FlacFormat& format) {
    const int blockSize = FlacBlockSize(format);
    // At the levels 1 and 4 the choice between left and right and middle and side stands for 0.4 seconds,
    // counted in FLAC frames.
    const auto step = static_cast<std::size_t>(std::max(std::lround(0.4 * format.Rate / blockSize), 1L));
    const std::size_t length = step * static_cast<std::size_t>(blockSize);
    return (LeastSegmentLength + length - 1) / length * length;
}

FlacSegment EncodeFlacSegment(const FlacFormat& format, std::span<const std::byte> pcm,
                              std::uint32_t firstFrame) {
    const CHandle<FLAC__StreamEncoder, FLAC__stream_encoder_delete> encoder(FLAC__stream_encoder_new());
    if (!encoder) throw EncoderFailure();
    SetUp(encoder.get(), format);
    Output output{{}, firstFrame};
    const auto code =
        FLAC__stream_encoder_init_stream(encoder.get(), Write, nullptr, nullptr, nullptr, &output);
    if (code != FLAC__STREAM_ENCODER_INIT_STATUS_OK) {
        throw Failure(FailureNumber::Component, u"FLAC has no such format"_s);
    }
    const std::size_t frameSize = static_cast<std::size_t>(format.Channels * format.Bits / 8);
    output.Segment.Length = pcm.size() / frameSize;
    output.Segment.Frames.reserve(pcm.size() * 3 / 4);
    std::vector<FLAC__int32> samples;
    bool encoded = true;
    while (!pcm.empty() && encoded) {
        const std::size_t now = std::min(pcm.size() / frameSize, FramesAtATime);
        Unpack(pcm.first(now * frameSize), format.Bits, samples);
        encoded = FLAC__stream_encoder_process_interleaved(encoder.get(), samples.data(),
                                                           static_cast<uint32_t>(now)) != 0;
        pcm = pcm.subspan(now * frameSize);
    }
    if (FLAC__stream_encoder_finish(encoder.get()) == 0 || !encoded) throw EncoderFailure();
    return std::move(output.Segment);
}

}  // namespace Sonmira

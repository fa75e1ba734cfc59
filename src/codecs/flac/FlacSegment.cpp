#include "codecs/flac/FlacSegment.h"

#include "platform/Failure.h"
#include "platform/Handles.h"

#include <FLAC/stream_encoder.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t NumberAt = 4;

// The remainder of `value` bits shifted by one byte, for a polynomial of as many bits.
template <class Number>
constexpr Number ShiftedByte(Number value, Number polynomial) {
    constexpr int bits = static_cast<int>(sizeof(Number)) * 8;
    for (int bit = 0; bit < 8; ++bit) {
        const bool carries = (value >> (bits - 1) & 1) != 0;
        value = static_cast<Number>(value << 1);
        if (carries) value = static_cast<Number>(value ^ polynomial);
    }
    return value;
}

// Table n holds the remainders of a byte that n more bytes follow, so that several are looked up at once.
constexpr std::size_t AtOnce = 8;
constexpr auto Remainders = [] {
    std::array<std::array<std::uint16_t, 256>, AtOnce> tables = {};
    for (unsigned byte = 0; byte < 256; ++byte) {
        tables[0][byte] = ShiftedByte<std::uint16_t>(static_cast<std::uint16_t>(byte << 8), 0x8005);
    }
    for (std::size_t table = 1; table < AtOnce; ++table) {
        for (unsigned byte = 0; byte < 256; ++byte) {
            const std::uint16_t before = tables[table - 1][byte];
            tables[table][byte] = static_cast<std::uint16_t>(before << 8 ^ tables[0][before >> 8]);
        }
    }
    return tables;
}();

unsigned At(std::span<const std::byte> bytes, std::size_t place) {
    return std::to_integer<unsigned>(bytes[place]);
}

std::uint16_t Crc16(std::span<const std::byte> bytes) {
    unsigned crc = 0;
    for (; bytes.size() >= AtOnce; bytes = bytes.subspan(AtOnce)) {
        unsigned next = Remainders[7][At(bytes, 0) ^ crc >> 8] ^ Remainders[6][At(bytes, 1) ^ (crc & 0xFF)];
        for (std::size_t i = 2; i < AtOnce; ++i) next ^= Remainders[AtOnce - 1 - i][At(bytes, i)];
        crc = next;
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        crc = (crc << 8 & 0xFFFF) ^ Remainders[0][crc >> 8 ^ At(bytes, i)];
    }
    return static_cast<std::uint16_t>(crc);
}

std::uint8_t Crc8(std::span<const std::byte> bytes) {
    std::uint8_t crc = 0;
    for (const std::byte byte : bytes) {
        crc =
            ShiftedByte<std::uint8_t>(static_cast<std::uint8_t>(crc ^ std::to_integer<unsigned>(byte)), 0x07);
    }
    return crc;
}

// Bytes of a number, told by its first one: as many as it has leading ones, or one for none.
std::size_t NumberSize(std::byte first) {
    return static_cast<std::size_t>(std::max(std::countl_one(std::to_integer<std::uint8_t>(first)), 1));
}

void AppendNumber(std::uint32_t number, std::vector<std::byte>& bytes) {
    if (number < 0x80) return bytes.push_back(static_cast<std::byte>(number));
    int following = 1;
    while (number >> (5 * following + 6) != 0) ++following;
    const unsigned mark = 0xFF00U >> (following + 1);
    bytes.push_back(static_cast<std::byte>(mark | number >> (6 * following)));
    while (following-- > 0)
        bytes.push_back(static_cast<std::byte>(0x80 | (number >> (6 * following) & 0x3F)));
}

// Bytes between the number and the CRC-8: a block size or a rate that has no code.
std::size_t SizeOfUncoded(std::byte codes) {
    const unsigned block = std::to_integer<unsigned>(codes) >> 4;
    const unsigned rate = std::to_integer<unsigned>(codes) & 15;
    const std::size_t blockSize = block == 6 ? 1 : block == 7 ? 2 : 0;
    const std::size_t rateSize = rate == 12 ? 1 : rate == 13 || rate == 14 ? 2 : 0;
    return blockSize + rateSize;
}

void Append(std::span<const std::byte> from, std::vector<std::byte>& to) {
    to.insert(to.end(), from.begin(), from.end());
}

}  // namespace

void AppendRenumbered(std::span<const std::byte> frame, std::uint32_t number,
                      std::vector<std::byte>& frames) {
    const std::size_t start = frames.size();
    const auto written = [&] { return std::span<const std::byte>(frames).subspan(start); };
    const std::span<const std::byte> behind = frame.subspan(NumberAt + NumberSize(frame[NumberAt]));
    const std::size_t uncoded = SizeOfUncoded(frame[2]);
    Append(frame.first(NumberAt), frames);
    AppendNumber(number, frames);
    Append(behind.first(uncoded), frames);
    frames.push_back(static_cast<std::byte>(Crc8(written())));
    Append(behind.subspan(uncoded + 1, behind.size() - uncoded - 3), frames);
    const std::uint16_t crc = Crc16(written());
    frames.push_back(static_cast<std::byte>(crc >> 8));
    frames.push_back(static_cast<std::byte>(crc & 0xFF));
}

// In the library since its first versions, but in none of its headers. The stream has one sum over all of its
// segments: one for each would be work for nothing.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is the library's.
extern "C" FLAC__bool FLAC__stream_encoder_set_do_md5(FLAC__StreamEncoder* encoder, FLAC__bool value);

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

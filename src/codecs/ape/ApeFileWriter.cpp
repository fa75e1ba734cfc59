#include "codecs/ape/ApeFileWriter.h"

#include "codecs/sound/PcmPacker.h"
#include "platform/Failure.h"

#include <QtEndian>

#include <cstring>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t CopyBytes = std::size_t{64} * 1024;

template <class Read, class Take>
void CopyVerbatim(qint64 count, Read&& read, Take&& take) {
    std::vector<std::byte> piece;
    for (qint64 at = 0; at < count; at += std::ssize(piece)) {
        piece.resize(static_cast<std::size_t>(std::min<qint64>(count - at, CopyBytes)));
        read(at, std::span<std::byte>(piece));
        take(std::span<const std::byte>(piece));
    }
}

}  // namespace

ApeFileWriter::ApeFileWriter(QStringView path, const ApeLevel& level, ApeInput& input)
    : Level(level), Input(input), KeepsHeader(input.HeadBytes() > 0), File(path) {
    // A decoder may find less or a little more than was expected; unused entries are legal.
    SeekEntries = (input.Blocks() + level.BlocksPerFrame - 1) / level.BlocksPerFrame + (KeepsHeader ? 0 : 1);
    if (SeekEntries > std::numeric_limits<int>::max() / 8) {
        throw Failure(FailureNumber::Component, u"The sound is too long for this format"_s);
    }
    File.Write(Descriptor());
    File.Write(Header());
    File.Write(SeekTable());
    CopyVerbatim(
        input.HeadBytes(), [&](qint64 from, std::span<std::byte> to) { input.ReadHead(from, to); },
        [&](std::span<const std::byte> piece) {
            File.Write(piece);
            Sum(piece);
        });
}

void ApeFileWriter::Sum(std::span<const std::byte> bytes) {
    Md5.addData(QByteArrayView(bytes.data(), std::ssize(bytes)));
}

std::vector<std::byte> ApeFileWriter::Descriptor() const {
    const auto frameData = static_cast<std::uint64_t>(FrameDataBytes);
    LittleEndianBytes bytes;
    bytes.Name("MAC ");
    bytes.Number(ApeVersion, 2);
    bytes.Number(0, 2);
    bytes.Number(ApeDescriptorBytes, 4);
    bytes.Number(ApeHeaderBytes, 4);
    bytes.Number(static_cast<std::uint64_t>(SeekEntries) * 4, 4);
    bytes.Number(static_cast<std::uint64_t>(Input.HeadBytes()), 4);
    bytes.Number(frameData & 0xFFFFFFFF, 4);
    bytes.Number(frameData >> 32, 4);
    bytes.Number(static_cast<std::uint64_t>(Input.TailBytes()), 4);
    for (qsizetype i = 0; i < 16; ++i) bytes.Number(i < Digest.size() ? static_cast<uchar>(Digest[i]) : 0, 1);
    return bytes.Bytes;
}

std::vector<std::byte> ApeFileWriter::Header() const {
    const PcmFormat& sound = Input.Sound();
    LittleEndianBytes bytes;
    bytes.Number(static_cast<std::uint64_t>(Level.Number), 2);
    bytes.Number(KeepsHeader ? 0 : ApeNoWavHeader, 2);
    bytes.Number(static_cast<std::uint64_t>(Level.BlocksPerFrame), 4);
    bytes.Number(LastFrameBlocks, 4);
    bytes.Number(Seeks.size(), 4);
    bytes.Number(static_cast<std::uint64_t>(sound.Bits), 2);
    bytes.Number(static_cast<std::uint64_t>(sound.Channels), 2);
    bytes.Number(static_cast<std::uint64_t>(sound.Rate), 4);
    return bytes.Bytes;
}

std::vector<std::byte> ApeFileWriter::SeekTable() const {
    LittleEndianBytes bytes;
    for (const std::uint32_t seek : Seeks) bytes.Number(seek, 4);
    bytes.Bytes.resize(static_cast<std::size_t>(SeekEntries) * 4);
    return bytes.Bytes;
}

void ApeFileWriter::WriteFrame(std::span<const std::uint8_t> frame, std::size_t blocks) {
    if (std::ssize(Seeks) == SeekEntries) {
        throw Failure(FailureNumber::Component, u"The file holds more sound than its header counts"_s);
    }
    const qint64 start =
        ApeDescriptorBytes + ApeHeaderBytes + SeekEntries * 4 + Input.HeadBytes() + FrameBytes;
    // Beyond 4 GiB the table's entries go round; decoders that know such files count the rounds.
    Seeks.push_back(static_cast<std::uint32_t>(start));
    LastFrameBlocks = blocks;
    FrameBytes += std::ssize(frame);
    WriteWords(frame);
}

// The bytes of each group of four are stored the other way round, groups being counted through all frames.
void ApeFileWriter::WriteWords(std::span<const std::uint8_t> bytes) {
    const auto* const from = static_cast<const std::byte*>(static_cast<const void*>(bytes.data()));
    Word.insert(Word.end(), from, from + bytes.size());
    const std::size_t whole = Word.size() / 4 * 4;
    Words.resize(whole);
    for (std::size_t at = 0; at < whole; at += 4) {
        qToLittleEndian(qFromBigEndian<quint32>(&Word[at]), &Words[at]);
    }
    Word.erase(Word.begin(), Word.begin() + static_cast<std::ptrdiff_t>(whole));
    FrameDataBytes += static_cast<qint64>(whole);
    Sum(Words);
    File.Write(Words);
}

void ApeFileWriter::Finish() {
    // One to four bytes, so that a decoder that reads whole words always finds the last one.
    const std::array<std::uint8_t, 4> padding{};
    WriteWords(std::span(padding).first(4 - static_cast<std::size_t>(FrameBytes % 4)));
    CopyVerbatim(
        Input.TailBytes(), [&](qint64 from, std::span<std::byte> to) { Input.ReadTail(from, to); },
        [&](std::span<const std::byte> piece) {
            File.Write(piece);
            Sum(piece);
        });
    Sum(Header());
    Sum(SeekTable());
    Digest = Md5.result();
    File.Patch(0, Descriptor());
    File.Patch(ApeDescriptorBytes, Header());
    File.Patch(ApeDescriptorBytes + ApeHeaderBytes, SeekTable());
    File.Close();
}

}  // namespace Sonmira

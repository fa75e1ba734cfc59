#include "codecs/ape/ApeFileReader.h"

#include "codecs/read/MediaInput.h"
#include "codecs/sound/Id3v2Head.h"

#include <QtEndian>

#include <array>
#include <cstring>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// No sound takes more when it is coded, by far.
constexpr qint64 MostBytesOfABlock = 64;

}  // namespace

std::optional<ApeFileReader> ApeFileReader::Open(std::shared_ptr<const InputFile> file) {
    ApeFileReader reader(std::move(file));
    return reader.ReadHeaders() ? std::optional(std::move(reader)) : std::nullopt;
}

bool ApeFileReader::ReadHeaders() {
    Start = BehindId3v2(*File);
    std::array<std::byte, ApeDescriptorBytes> descriptor{};
    const std::size_t there = File->ReadFully(Start, descriptor);
    if (std::memcmp(descriptor.data(), "MAC ", 4) != 0) {
        throw Failure(FailureNumber::Component, u"This is not an APE file"_s);
    }
    if (there < descriptor.size()) throw DamagedFile();
    if (qFromLittleEndian<quint16>(&descriptor[4]) != ApeVersion) return false;
    const auto number = [&](std::size_t at) { return qint64{qFromLittleEndian<quint32>(&descriptor[at])}; };
    const qint64 descriptorBytes = number(8);
    const qint64 headerBytes = number(12);
    const qint64 seekBytes = number(16);
    Head = number(20);
    FrameDataBytes = number(24) | number(28) << 32;
    Tail = number(32);
    TablesBytes = descriptorBytes + headerBytes + seekBytes;

    std::array<std::byte, ApeHeaderBytes> header{};
    if (descriptorBytes < ApeDescriptorBytes || headerBytes < ApeHeaderBytes ||
        File->ReadFully(Start + descriptorBytes, header) < header.size()) {
        throw DamagedFile();
    }
    Shape = ApeLevelOf(qFromLittleEndian<quint16>(&header[0]));
    const auto framesCounted = qFromLittleEndian<quint32>(&header[12]);
    LastFrameBlocks = qFromLittleEndian<quint32>(&header[8]);
    Format = {qFromLittleEndian<qint32>(&header[20]), qFromLittleEndian<quint16>(&header[18]),
              qFromLittleEndian<quint16>(&header[16])};
    const bool isOurs = Shape != nullptr && Format.Rate > 0 &&
                        (Format.Channels == 1 || Format.Channels == 2) &&
                        (Format.Bits == 8 || Format.Bits == 16 || Format.Bits == 24) &&
                        qFromLittleEndian<quint32>(&header[4]) == static_cast<quint32>(Shape->BlocksPerFrame);
    if (!isOurs) return false;
    const bool isSound =
        framesCounted == 0 || (LastFrameBlocks > 0 && LastFrameBlocks <= Shape->BlocksPerFrame);
    if (!isSound || seekBytes < qint64{framesCounted} * 4 || FramesStart() > File->Size())
        throw DamagedFile();
    // A file that ends early has lost its last frames; what is behind those it does not have either. A size
    // of 64 bits may come out below nothing.
    const qint64 left = File->Size() - FramesStart();
    if (FrameDataBytes <= 0 || FrameDataBytes > left) FrameDataBytes = left;
    Tail = std::min(Tail, left - FrameDataBytes);
    Frames.resize(std::size_t{framesCounted} + 1);
    EndFrame = framesCounted;
    ReadSeekTable(Start + descriptorBytes + headerBytes);
    return true;
}

void ApeFileReader::ReadSeekTable(qint64 position) {
    std::vector<std::byte> table((Frames.size() - 1) * 4);
    if (File->ReadFully(position, table) < table.size()) throw DamagedFile();
    // Entries are places in the file, without a tag in front, of 32 bits that go round beyond 4 GiB.
    const qint64 first = FramesStart() - Start;
    qint64 round = 0;
    qint64 last = 0;
    for (std::size_t i = 0; i + 1 < Frames.size(); ++i) {
        const qint64 entry = qFromLittleEndian<quint32>(&table[i * 4]);
        if (entry + round < last) round += 1LL << 32;
        last = entry + round;
        Frames[i] = std::clamp<qint64>(last - first, 0, FrameDataBytes);
    }
    Frames.back() = FrameDataBytes;
}

qint64 ApeFileReader::Blocks() const {
    const auto frames = static_cast<qint64>(Frames.size()) - 1;
    return frames == 0 ? 0 : (frames - 1) * Shape->BlocksPerFrame + LastFrameBlocks;
}

// The bytes of each word of the frame data are stored the other way round, and frames begin anywhere.
std::vector<std::uint8_t> ApeFileReader::FrameBytes(std::size_t frame, std::size_t padding) const {
    const qint64 from = Frames[frame];
    const qint64 most = MostBytesOfABlock * Shape->BlocksPerFrame;
    const qint64 to = std::min(Frames[frame + 1], from + most);
    const qint64 firstWord = from / 4 * 4;
    const auto wordBytes = static_cast<std::size_t>((std::max(to, from) + 3) / 4 * 4 - firstWord);
    std::vector<std::byte> words(wordBytes);
    File->ReadFully(FramesStart() + firstWord, words);
    for (std::size_t at = 0; at < wordBytes; at += 4) {
        qToLittleEndian(qFromBigEndian<quint32>(&words[at]), &words[at]);
    }
    const auto count = static_cast<std::size_t>(std::max<qint64>(to - from, 0));
    std::vector<std::uint8_t> bytes(count + padding);
    if (count > 0) std::memcpy(bytes.data(), &words[static_cast<std::size_t>(from - firstWord)], count);
    return bytes;
}

qint64 ApeFileReader::Select(qint64 start, qint64 finish) {
    const qint64 full = Shape->BlocksPerFrame;
    NextFrame = static_cast<std::size_t>(start / full);
    EndFrame = static_cast<std::size_t>((finish + full - 1) / full);
    return start / full * full;
}

std::unique_ptr<ApeFrameGroup> ApeFileReader::NextGroup(std::size_t padding) {
    const std::size_t frames = Frames.size() - 1;
    auto group = std::make_unique<ApeFrameGroup>();
    for (; NextFrame < EndFrame && group->Frames.size() < MostApeFramesOfAGroup(Format.Channels);
         ++NextFrame) {
        std::vector<std::uint8_t> bytes = FrameBytes(NextFrame, padding);
        // Nothing of it is there: the file was cut, or it never had what it counts.
        CutShort = bytes.size() == padding;
        if (CutShort) break;
        group->Frames.push_back(std::move(bytes));
        group->Blocks +=
            static_cast<std::size_t>(NextFrame + 1 < frames ? Shape->BlocksPerFrame : LastFrameBlocks);
    }
    if (CutShort) NextFrame = EndFrame;
    return group->Frames.empty() ? nullptr : std::move(group);
}

}  // namespace Sonmira

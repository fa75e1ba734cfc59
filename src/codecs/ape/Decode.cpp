#include "codecs/ape/Decode.h"

#include "codecs/ape/ApeFileReader.h"
#include "codecs/ape/ApeLink.h"
#include "codecs/ape/FrameCoding.h"
#include "codecs/read/MediaReader.h"
#include "codecs/sound/PcmPacker.h"
#include "codecs/wav/WavLayout.h"
#include "codecs/wav/WavWriter.h"
#include "platform/Failure.h"
#include "platform/Files.h"

#include <QtEndian>

#include <cstring>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// A stored header longer than this is not looked at; a plain one takes its place.
constexpr qint64 MostHeadBytes = 1 << 20;
constexpr qint64 TailPiece = qint64{64} * 1024;

// What stands before the sound and behind it in the WAV file.
struct Frame {
    std::vector<std::byte> Head;
    qint64 TailStart = 0;
    qint64 TailBytes = 0;
};

qint64 Bytes(const ApeFileReader& ape) {
    return ape.Blocks() * ape.Sound().FrameSize();
}

// The source's own header and tail, where that gives a plain PCM WAV again, which every program reads.
std::optional<Frame> StoredFrame(const ApeFileReader& ape, const InputFile& file) {
    if (ape.HeadBytes() == 0 || ape.HeadBytes() > MostHeadBytes) return {};
    Frame frame{std::vector<std::byte>(static_cast<std::size_t>(ape.HeadBytes())), ape.TailStart(),
                ape.TailBytes()};
    if (file.ReadFully(ape.HeadStart(), frame.Head) < frame.Head.size()) return {};
    const QByteArray head = QByteArray::fromRawData(
        static_cast<const char*>(static_cast<const void*>(frame.Head.data())), std::ssize(frame.Head));
    const auto layout =
        WavLayoutOf([&](qint64 position, qsizetype count) { return head.mid(position, count); });
    if (!layout || !layout->IsPlain || layout->DataStart != ape.HeadBytes() || layout->Sound != ape.Sound()) {
        return {};
    }
    const qint64 data = Bytes(ape);
    const bool isCounted = layout->DataClaimed >= data && layout->DataClaimed <= data + ape.TailBytes();
    return isCounted ? std::optional(std::move(frame)) : std::nullopt;
}

Frame PlainFrame(const PcmFormat& sound, qint64 blocks) {
    const qint64 data = blocks * sound.FrameSize();
    return {WavHeader(sound, data > MostWavData ? UnknownWavSize : data), 0, 0};
}

// Has the header count so many bytes of sound and none behind them. It ends with the head of the data chunk.
void PatchSize(OutputFile& out, const Frame& frame, qint64 size) {
    const qint64 head = std::ssize(frame.Head);
    const auto patch = [&](qint64 position, qint64 number) {
        LittleEndianBytes bytes;
        bytes.Number(static_cast<std::uint64_t>(std::min<qint64>(number, UnknownWavSize)), 4);
        out.Patch(position, bytes.Bytes);
    };
    patch(4, head - 8 + size);
    patch(head - 4, size > MostWavData ? UnknownWavSize : size);
}

// Whether the header counts nothing that anybody believes, however much there is.
bool IsSizeUntold(const Frame& frame) {
    return IsUnknownWavSize(qFromLittleEndian<quint32>(&frame.Head[frame.Head.size() - 4]));
}

void WriteTail(const InputFile& file, const Frame& frame, OutputFile& out) {
    std::vector<std::byte> piece;
    for (qint64 at = 0; at < frame.TailBytes; at += std::ssize(piece)) {
        piece.resize(static_cast<std::size_t>(std::min(frame.TailBytes - at, TailPiece)));
        if (file.ReadFully(frame.TailStart + at, piece) < piece.size()) throw DamagedFile();
        out.Write(piece);
    }
}

// What lies between two places of a stream whose pieces come in order.
class Cut {
public:
    Cut(qint64 skipped, qint64 taken) : Skip(skipped), Left(taken) {}

    std::span<const std::byte> Of(std::span<const std::byte> piece) {
        const qint64 size = std::ssize(piece);
        const qint64 first = std::min(Skip, size);
        const qint64 count = std::min(Left, size - first);
        Skip -= first;
        Left -= count;
        return piece.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
    }
    bool IsComplete() const { return Left == 0; }

private:
    qint64 Skip;
    qint64 Left;
};

void DecodeOurs(ApeFileReader& ape, const InputFile& file, const std::optional<ApeLink>& link,
                OutputFile& out, const ApeProgressCallback& progress, const qint32& killFlag,
                const ApeWorkers& workers) {
    const qint64 blockBytes = ape.Sound().FrameSize();
    const ApeLink::Part part = link ? link->PartOf(ape.Blocks()) : ApeLink::Part{0, ape.Blocks(), false};
    const qint64 firstBlock = link ? ape.Select(part.Start, part.Finish) : 0;
    auto stored = link ? std::nullopt : StoredFrame(ape, file);
    const bool isStored = stored.has_value();
    const Frame frame = isStored ? std::move(*stored) : PlainFrame(ape.Sound(), part.Finish - part.Start);
    out.Write(frame.Head);
    const qint64 wanted = (part.Finish - part.Start) * blockBytes;
    // It comes when all is there: before that it would hide that a disk took no more.
    const bool isUntold = wanted > 0 && IsSizeUntold(frame);
    if (isUntold) PatchSize(out, frame, WavSizeBeyond(0, MostWavData));
    Cut cut((part.Start - firstBlock) * blockBytes, wanted);
    const auto groupBytes = static_cast<qint64>(MostApeFramesOfAGroup(ape.Sound().Channels)) *
                            ape.Level().BlocksPerFrame * blockBytes;
    qint64 lost = 0;  // bytes
    ApeWork work(workers, part.Finish - firstBlock, 2 * groupBytes, progress, killFlag);
    const bool isWhole = work.Run(
        [&](ApeWorkState& state) -> ApeWork::Worker {
            const auto decoder =
                std::make_shared<ApeFrameDecoder>(ape.Level(), ape.Sound(), *workers.Kernels);
            return [decoder, &state](ApeFrameGroup& group) {
                decoder->Decode(group, state);
                group.Frames = {};
            };
        },
        [&] { return ape.NextGroup(ApeFrameDecoder::Padding); },
        [&](ApeFrameGroup& group) {
            out.Write(cut.Of(group.Pcm));
            lost += static_cast<qint64>(group.Lost) * blockBytes;
        });
    const qint64 there = out.Size() - std::ssize(frame.Head);
    if (!isWhole) {
        PatchSize(out, frame, there);
    } else if (lost > 0 || ape.IsCutShort() || part.IsCutShort) {
        // Silence in the place of a frame is not its sound. Nothing may stand behind that could count as it.
        PatchSize(out, frame, WavSizeBeyond(there, std::max(there + lost, wanted)));
    } else {
        if (isStored) {
            WriteTail(file, frame, out);
        } else if (there % 2 != 0) {
            out.Write(std::vector<std::byte>(1));
        }
        if (isUntold) out.Patch(0, frame.Head);
    }
    out.Close();
    if (lost > 0 || ape.IsCutShort() || (isWhole && part.IsCutShort)) throw DamagedFile();
}

// Other versions, by the libraries' decoder.
void DecodeOthers(const std::shared_ptr<const InputFile>& ape, const std::optional<ApeLink>& link,
                  OutputFile& out, const ApeProgressCallback& progress, const qint32& killFlag) {
    constexpr qint64 pieceBytes = qint64{64} * 1024;
    MediaReader reader(ape);
    AudioBlock block = reader.Read(pieceBytes);
    const StreamFormat format = reader.Format();
    WavWriter writer({format.Rate, format.Channels, block.Type == SampleType::Int16 ? 16 : 24},
                     WavWriter::Beyond4Gb::GrowsOn);
    const auto blockBytes = static_cast<qint64>(reader.FrameSize());
    const qint64 length = std::max<qint64>(reader.Length(), 1);
    const ApeLink::Part part = link ? link->PartOf(length) : ApeLink::Part{0, length, false};
    // Without a link all that comes is taken, whatever length the file tells.
    const bool isToEnd = !link || !link->Finish;
    Cut cut(part.Start * blockBytes,
            isToEnd ? std::numeric_limits<qint64>::max() : (part.Finish - part.Start) * blockBytes);
    writer.Claim(part.Finish - part.Start);
    qint64 done = 0;
    const auto finish = [&] {
        writer.Finish(out);
        out.Close();
    };
    try {
        while (!block.IsEmpty()) {
            done += std::ssize(block.Bytes) / blockBytes;
            const auto taken = cut.Of(block.Bytes);
            block.Bytes = {taken.begin(), taken.end()};
            if (!block.IsEmpty()) writer.Write(block, out);
            if (progress) progress(static_cast<qint32>(std::min(done, part.Finish) * 100'000 / part.Finish));
            if (killFlag != 0 || cut.IsComplete()) break;
            block = reader.Read(pieceBytes);
        }
    } catch (const Failure&) {
        writer.KeepClaim();
        PassOver(finish);
        throw;
    }
    const bool isShort = killFlag == 0 && (part.IsCutShort || (!isToEnd && !cut.IsComplete()));
    if (isShort) writer.KeepClaim();
    finish();
    if (isShort) throw DamagedFile();
}

}  // namespace

void DecodeApe(const QString& ape, const QString& wav, const ApeProgressCallback& progress,
               const qint32& killFlag, const ApeWorkers& workers) {
    const auto named = std::make_shared<const InputFile>(ape);
    const auto link = ReadApeLink(ape, *named);
    const auto file = link ? link->Image : named;
    // Made before anything is decoded: who asked for it goes by its being there.
    OutputFile out(wav, OutputFile::Existing::Overwritten);
    if (auto reader = ApeFileReader::Open(file)) {
        DecodeOurs(*reader, *file, link, out, progress, killFlag, workers);
    } else {
        DecodeOthers(file, link, out, progress, killFlag);
    }
}

}  // namespace Sonmira

#include "codecs/ape/ApeInput.h"

#include "codecs/read/MediaReader.h"
#include "codecs/sound/PcmPacker.h"
#include "codecs/sound/StreamConverter.h"
#include "codecs/wav/WavLayout.h"
#include "codecs/wav/WavWriter.h"
#include "platform/Files.h"

#include <cstring>

namespace Sonmira {

namespace {

// Head and tail are counted in 32 bits, and nobody keeps more beside the sound.
constexpr qint64 MostVerbatim = 1LL << 30;

// Beyond this a size says nothing, whatever the program takes off for its header.
constexpr qint64 AllOnes = 0xFFFFFF00;
// No program writes more than this behind the sound.
constexpr qint64 MostChunks = 64LL << 20;

// The bytes of a file as they are.
class PlainInput final : public ApeInput {
public:
    PlainInput(std::unique_ptr<const InputFile> file, const WavLayout& layout) : File(std::move(file)) {
        Format = layout.Sound;
        Head = layout.DataStart;
        const qint64 there = std::max<qint64>(File->Size() - Head, 0);
        const qint64 claimed = layout.DataClaimed;
        // Programs that write into a pipe know no size; nothing can follow the sound then.
        const bool isEmpty = IsWavWithoutSound(*File);
        const bool isUnknown = claimed > there || claimed >= AllOnes || (claimed == 0 && !isEmpty) ||
                               (claimed >= LeastUnknownWavSize && there - claimed > MostChunks);
        const qint64 data = isUnknown ? there : claimed;
        Count = data / Format.FrameSize();
        // Part of a block, a padding byte and trailing chunks.
        Tail = there - Count * Format.FrameSize();
    }

    std::size_t Read(std::span<std::byte> target) override {
        const qint64 left = Count * Format.FrameSize() - Position;
        const auto wanted = static_cast<std::size_t>(std::min<qint64>(left, std::ssize(target)));
        const std::size_t count = File->ReadFully(Head + Position, target.first(wanted));
        if (count < wanted) throw DamagedFile();
        Position += static_cast<qint64>(count);
        return count;
    }
    void ReadHead(qint64 from, std::span<std::byte> target) override { ReadAll(from, target); }
    void ReadTail(qint64 from, std::span<std::byte> target) override {
        ReadAll(Head + Count * Format.FrameSize() + from, target);
    }
    void CheckEnd() override {
        if (MissingWavBytes(*File) > 0) throw DamagedFile();
    }

private:
    void ReadAll(qint64 position, std::span<std::byte> target) {
        if (File->ReadFully(position, target) < target.size()) throw DamagedFile();
    }

    std::unique_ptr<const InputFile> File;
    qint64 Position = 0;
};

// Everything else, through the libraries' decoders.
class DecodedInput final : public ApeInput {
public:
    DecodedInput(QStringView path, std::function<bool()> givesUp) : Reader(path) {
        Reader.GivesUp = std::move(givesUp);
        const StreamFormat source = Reader.Format();
        Format.Rate = source.Rate;
        Format.Channels = std::min(source.Channels, 2);
        First = Reader.Read(BlockSize);
        const bool isNarrow = First.Type == SampleType::Int16 && source.Channels <= 2;
        Format.Bits = isNarrow ? 16 : 24;
        Converter.emplace(source, StreamFormat{Format.Rate, Format.Channels}, ResamplerPrecision::Bits28);
        Packer.emplace(Format.Bits);
        Count = Reader.Length();
    }

    std::size_t Read(std::span<std::byte> target) override {
        std::size_t done = 0;
        while (done < target.size()) {
            if (PackedStart == Packed.size() && !ReadMore()) break;
            const std::size_t count = std::min(target.size() - done, Packed.size() - PackedStart);
            std::memcpy(&target[done], &Packed[PackedStart], count);
            PackedStart += count;
            done += count;
        }
        return done;
    }
    void ReadHead(qint64 /*from*/, std::span<std::byte> /*target*/) override {}
    void ReadTail(qint64 /*from*/, std::span<std::byte> /*target*/) override {}
    void CheckEnd() override {
        if (Error) std::rethrow_exception(Error);
    }

private:
    static constexpr qint64 BlockSize = qint64{256} * 1024;

    bool ReadMore() {
        AudioBlock block = NextBlock();
        if (block.IsEmpty()) return false;
        Packed.clear();
        PackedStart = 0;
        Packer->Pack(Converter->Convert(std::move(block)), Packed);
        return true;
    }

    // What was read is encoded and finished before its end is a failure.
    AudioBlock NextBlock() {
        if (!First.IsEmpty()) return std::exchange(First, {});
        AudioBlock block;
        try {
            if (!Error) block = Reader.Read(BlockSize);
        } catch (const Failure&) {
            Error = std::current_exception();
        }
        return block;
    }

    MediaReader Reader;
    std::exception_ptr Error;
    AudioBlock First;
    std::optional<StreamConverter> Converter;
    std::optional<PcmPacker> Packer;
    std::vector<std::byte> Packed;
    std::size_t PackedStart = 0;
};

}  // namespace

std::unique_ptr<ApeInput> OpenApeInput(QStringView path, std::function<bool()> givesUp) {
    auto file = std::make_unique<const InputFile>(path);
    const auto layout = WavLayoutOf(BytesReaderOf(*file));
    if (layout && layout->DataStart < MostVerbatim) {
        auto input = std::make_unique<PlainInput>(std::move(file), *layout);
        if (input->TailBytes() < MostVerbatim) return input;
    }
    return std::make_unique<DecodedInput>(path, std::move(givesUp));
}

}  // namespace Sonmira

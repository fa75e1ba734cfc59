#include "codecs/WavDecoding.h"

#include "codecs/read/MediaReader.h"
#include "codecs/wav/WavWriter.h"
#include "codecs/write/FileWriting.h"
#include "platform/Failure.h"

#include <algorithm>
#include <limits>

namespace Sonmira {

namespace {

// Small enough that a stop is heard at once, large enough that a block costs nothing beside its sound.
constexpr qint64 BlockSize = 128LL * 1024;

bool Copy(SoundReader& reader, FileWriting& wav, qint64& done, qint64 total, const WavProgress& progress) {
    const auto channels = static_cast<std::size_t>(reader.Format().Channels);
    while (true) {
        AudioBlock block = reader.Read(BlockSize);
        if (block.IsEmpty()) return true;
        done += static_cast<qint64>(block.Bytes.size() / (BytesOf(block.Type) * channels));
        wav.Write(std::move(block));
        if (!progress(std::min(done, total), total)) return false;
    }
}

}  // namespace

bool DecodeIntoWav(QStringView path, QStringView outputPath, const SoundOpening& open,
                   const WavProgress& progress) {
    return WithMemoryChecked([&] {
        auto input = std::make_shared<const InputFile>(path);
        OutputFile output(outputPath, OutputFile::Existing::Overwritten);
        const std::unique_ptr<SoundReader> reader = open(std::move(input));
        const StreamFormat source = reader->Format();
        const PcmFormat format{source.Rate, std::min(source.Channels, 2), reader->Bits()};
        auto writer = std::make_unique<WavWriter>(format, WavWriter::Beyond4Gb::GrowsOn);
        WavWriter& header = *writer;
        FileWriting wav(std::move(output), format, std::move(writer));
        wav.SetSource(source);
        qint64 done = 0;
        qint64 total = 0;
        reader->GivesUp = [&] { return !progress(std::min(done, total), total); };
        bool whole = false;
        try {
            total = reader->Length();
            header.Claim(total);
            whole = Copy(*reader, wav, done, total, progress);
        } catch (const Failure&) {
            header.KeepClaim();
            PassOver([&] { wav.Close(); });
            throw;
        }
        wav.Close();
        return whole;
    });
}

void DecodeIntoWavOrPart(QStringView path, QStringView outputPath, const SoundOpening& open,
                         const WavProgress& progress) {
    bool isBegun = false;
    try {
        DecodeIntoWav(path, outputPath, open, [&](qint64 done, qint64 total) {
            isBegun = isBegun || done > 0;
            return progress(done, total);
        });
    } catch (const Failure&) {
        if (!isBegun) throw;
    }
}

std::unique_ptr<SoundReader> OpenByMediaReader(std::shared_ptr<const InputFile> file) {
    return std::make_unique<MediaReader>(std::move(file));
}

qint16 PercentOf(qint64 done, qint64 total) {
    if (total <= 0) return 0;
    return static_cast<qint16>(std::clamp<qint64>(done * 100 / total, 0, 100));
}

ProgressCount::ProgressCount(qint64 done, qint64 total) {
    if (total <= 0) {
        // Of a length that nobody knows: work goes on, and those who listen are to hear of it.
        Total = 100;
        Done = done > 0 ? 1 : 0;
        return;
    }
    const qint64 unit = total / std::numeric_limits<qint32>::max() + 1;
    Done = static_cast<qint32>(std::min(done, total) / unit);
    Total = static_cast<qint32>(total / unit);
}

qint32 WholeSeconds(QStringView path, const SoundOpening& open) {
    qint64 seconds = 0;
    PassOver([&] {
        WithMemoryChecked([&] {
            const auto reader = open(std::make_shared<const InputFile>(path));
            seconds = reader->Length() / reader->Format().Rate;
        });
    });
    return static_cast<qint32>(std::min<qint64>(seconds, std::numeric_limits<qint32>::max()));
}

}  // namespace Sonmira

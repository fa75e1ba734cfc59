#include "codecs/FlacEncoder.h"

#include "codecs/WavDecoding.h"
#include "codecs/flac/FlacHeader.h"
#include "codecs/read/PcmReader.h"
#include "codecs/sound/OrderedJobs.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Handles.h"

#include <algorithm>

extern "C" {
#include <libavutil/md5.h>
#include <libavutil/mem.h>
}

namespace Sonmira {

namespace {

class Md5 {
public:
    Md5() : State(av_md5_alloc()) {
        if (!State) throw std::bad_alloc();
        av_md5_init(State.get());
    }
    void Add(std::span<const std::byte> bytes) {
        av_md5_update(State.get(), static_cast<const uint8_t*>(static_cast<const void*>(bytes.data())),
                      bytes.size());
    }
    std::array<std::uint8_t, 16> Sum() {
        std::array<std::uint8_t, 16> sum = {};
        av_md5_final(State.get(), sum.data());
        return sum;
    }

private:
    CHandle<AVMD5, av_free> State;
};

PcmFormat FlacInput(const StreamFormat& source, int bits) {
    return {source.Rate, std::min(source.Channels, 2), std::min(bits, WidestBits)};
}

// The WAV as the samples that go into the FLAC file, cut into segments.
class SegmentReader {
public:
    SegmentReader(std::shared_ptr<const InputFile> file, int level)
        : Wav(std::move(file), FlacInput),
          Form{Wav.Format().Rate, Wav.Format().Channels, Wav.Format().Bits, level},
          SegmentSize(FlacSegmentLength(Form) * static_cast<std::size_t>(Form.Channels * Form.Bits / 8)) {}

    const FlacFormat& Format() const { return Form; }
    qint64 Length() { return Wav.Length(); }

    // The next segment; empty at the end.
    std::vector<std::byte> Next() {
        while (Pending.size() < SegmentSize) {
            const std::size_t start = Pending.size();
            if (!Wav.Append(Pending)) break;
            TakeIn(std::span(Pending).subspan(start));
        }
        std::vector<std::byte> rest;
        if (Pending.size() > SegmentSize) {
            rest.assign(Pending.begin() + static_cast<std::ptrdiff_t>(SegmentSize), Pending.end());
            Pending.resize(SegmentSize);
        }
        return std::exchange(Pending, std::move(rest));
    }

    std::array<std::uint8_t, 16> Sum() { return Samples.Sum(); }
    void ReportFailure() const { Wav.ReportFailure(); }

private:
    void TakeIn(std::span<std::byte> pcm) {
        // FLAC knows no unsigned samples.
        if (Form.Bits == 8) {
            for (std::byte& sample : pcm) sample ^= std::byte{0x80};
        }
        Samples.Add(pcm);
    }

    PcmReader Wav;
    FlacFormat Form;
    std::size_t SegmentSize;
    Md5 Samples;
    std::vector<std::byte> Pending;
};

using Percent = std::function<void(qint16 percent)>;

void Encode(SegmentReader& reader, OutputFile& file, const Percent& progress) {
    const FlacFormat format = reader.Format();
    const qint64 expected = reader.Length();
    const auto blockSize = static_cast<std::size_t>(FlacBlockSize(format));
    const std::size_t framesOfSegment = FlacSegmentLength(format) / blockSize;
    FlacHeader header(format, expected);
    file.Write(header.Bytes());
    OrderedJobs<FlacSegment> jobs;
    std::uint32_t firstFrame = 0;
    bool ended = false;
    while (!ended || !jobs.IsIdle()) {
        const bool feeds = !ended && jobs.HasRoom();
        if (feeds) {
            std::vector<std::byte> pcm = reader.Next();
            ended = pcm.empty();
            if (!ended) {
                jobs.Push([format, firstFrame, pcm = std::move(pcm)] {
                    return EncodeFlacSegment(format, pcm, firstFrame);
                });
            }
            firstFrame += static_cast<std::uint32_t>(framesOfSegment);
        }
        if (const auto segment = jobs.Take(feeds ? std::chrono::milliseconds(0) : WaitAtOnce)) {
            header.Add(*segment);
            file.Write(segment->Frames);
        }
        if (progress) progress(PercentOf(header.Length(), expected));
    }
    header.SetSum(reader.Sum());
    file.Patch(0, header.Bytes());
}

}  // namespace

void FlacEncoder::EncodeFromWav(const QString& wav, const QString& output, qint16 level) {
    if (level < 0 || level > 8) throw Failure(FailureNumber::InvalidCall);
    WithMemoryChecked([&] {
        SegmentReader reader(std::make_shared<const InputFile>(wav), level);
        OutputFile file(output);
        Encode(reader, file, Progress);
        file.Close();
        reader.ReportFailure();
    });
}

}  // namespace Sonmira

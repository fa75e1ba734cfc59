#include "codecs/read/MediaReader.h"

#include "codecs/flac/FlacReader.h"
#include "codecs/read/FileCounts.h"
#include "codecs/read/MediaLength.h"
#include "codecs/wav/WavLayout.h"

#include <algorithm>
#include <string_view>

extern "C" {
#include <libavformat/avformat.h>
}

namespace Sonmira {

namespace {

constexpr qint64 MostBytesOfABlock = 16LL * 1024 * 1024;
// A header with rates beyond lies: the fastest one in use is that of DSD in its eight-bit groups.
constexpr int MostRate = 6'200'000;
// Seconds that may be missing: less is what headers and time stamps are wrong by.
constexpr double MostLost = 0.1;
constexpr double MostLostOfLossless = 0.005;

bool IsPlainFlac(const MediaInput& input) {
    return std::string_view(input.Container().iformat->name) == "flac";
}

}  // namespace

MediaReader::MediaReader(QStringView path) : MediaReader(std::make_shared<const InputFile>(path)) {}

MediaReader::MediaReader(std::shared_ptr<const InputFile> file) : Input(std::move(file)), Decoder(Input) {
    DecodeFirst();
    if (Format().Rate < 1 || Format().Rate > MostRate || Format().Channels < 1) throw DamagedFile();
    End = SoundEnd(Input, Format().Rate);
}

void MediaReader::DecodeFirst() {
    const bool isEmpty = IsWavWithoutSound(*Input.File());
    if (const AVFrame* first = isEmpty ? nullptr : Decoder.Next()) {
        Samples = std::make_unique<FrameSamples>(*first);
        Samples->Append(*first, Pending);
        return;
    }
    Ended = true;
    LengthFound = 0;
    // A length that was only estimated claims nothing, and the tag of an MP3 may rightly take all of its
    // frames away.
    const AVStream& sound = Input.Sound();
    const bool claimsSound = !isEmpty && sound.duration > 0 && sound.codecpar->codec_id != AV_CODEC_ID_MP3 &&
                             Input.Container().duration_estimation_method != AVFMT_DURATION_FROM_BITRATE;
    if (Decoder.BadPackets() > 0 || claimsSound) throw DamagedFile();
    Samples = std::make_unique<FrameSamples>(Decoder.Rate(), Decoder.Channels(), Decoder.SampleFormat());
}

// Decodes one frame behind what is pending. False at the end.
bool MediaReader::DecodeMore() {
    if (Ended) return false;
    Pending.erase(Pending.begin(), Pending.begin() + static_cast<std::ptrdiff_t>(PendingStart));
    PendingStart = 0;
    if (const AVFrame* frame = Decoder.Next()) {
        Samples->Append(*frame, Pending);
    } else {
        Ended = true;
        Samples->Finish(Pending);
    }
    return true;
}

// How much of what is pending may be given: all, but for what may turn out to be padding.
std::size_t MediaReader::ReadyBytes() {
    const std::size_t pending = Pending.size() - PendingStart;
    if (!End) return pending;
    const auto frames = static_cast<qint64>(pending / FrameSize());
    if (FramesGiven + frames > *End + MostPadding) {
        End.reset();
        return pending;
    }
    return static_cast<std::size_t>(std::clamp<qint64>(*End - FramesGiven, 0, frames)) * FrameSize();
}

AudioBlock MediaReader::Read(qint64 size) {
    const auto frameSize = static_cast<qint64>(FrameSize());
    const qint64 frames = std::max<qint64>(std::min(size, MostBytesOfABlock) / frameSize, 1);
    const auto wanted = static_cast<std::size_t>(frames * frameSize);
    AudioBlock block{Samples->Type(), {}, Samples->Speakers()};
    block.Bytes.reserve(wanted);
    do {
        const std::size_t count = std::min(ReadyBytes(), wanted - block.Bytes.size());
        const auto from = Pending.begin() + static_cast<std::ptrdiff_t>(PendingStart);
        block.Bytes.insert(block.Bytes.end(), from, from + static_cast<std::ptrdiff_t>(count));
        PendingStart += count;
        FramesGiven += static_cast<qint64>(count / FrameSize());
    } while (block.Bytes.size() < wanted && DecodeMore());
    // Told at the very end, so that all that is there is given first.
    if (block.Bytes.empty() && IsCutShort()) throw DamagedFile();
    return block;
}

bool MediaReader::IsCutShort() const {
    if (MissingWavBytes(*Input.File()) > 0) return true;
    const SoundGaps& gaps = Decoder.Gaps();
    const bool isLacking = FramesGiven < LeastLength(Input, Format().Rate, End);
    if (IsPlainFlac(Input)) {
        // Who cuts and joins such files may leave a wrong count behind, but frames carry their numbers.
        const bool isLost = gaps.Seconds() > MostLostOfLossless || (isLacking && Decoder.BadPackets() > 0);
        return isLost && !IsSumOfFlacRight(Input.File(), GivesUp);
    }
    const SoundGiven given{static_cast<double>(FramesGiven) / Format().Rate, gaps.End(),
                           Decoder.GoodPackets()};
    const double most = IsExact() ? MostLostOfLossless : MostLost;
    return isLacking || gaps.Seconds() > most || MissingByCounts(Input, given) > MostLost;
}

bool MediaReader::IsExact() const {
    return IsLossless(Input.Sound().codecpar->codec_id);
}

int MediaReader::Bits() const {
    if (!IsExact()) return 16;
    if (Samples->Type() == SampleType::Float32) return 32;
    const AVCodecParameters& sound = *Input.Sound().codecpar;
    const int told = sound.bits_per_raw_sample > 0 ? sound.bits_per_raw_sample : sound.bits_per_coded_sample;
    const int held = Samples->Type() == SampleType::Int16 ? 16 : 32;
    return told > 0 ? std::min((told + 7) / 8 * 8, held) : held;
}

qint64 MediaReader::Length() {
    if (!LengthFound) LengthFound = SoundLength(Input, Format().Rate, End, GivesUp);
    return *LengthFound;
}

}  // namespace Sonmira

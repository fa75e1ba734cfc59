#include "codecs/write/FileWriting.h"

#include "platform/Failure.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString StreamText(int frequency, int channels) {
    return u"%1 Hz, %2"_s.arg(frequency).arg(channels == 1 ? u"Mono"_s : u"Stereo"_s);
}

QString VorbisRateText(const VorbisFormat& format) {
    if (format.Quality) return u"quality %1"_s.arg(*format.Quality / 100.0, 0, 'f', 1);
    QString text = u"%1 kbit/s"_s.arg(format.Nominal.value_or(format.Maximum.value_or(0)));
    if (format.Minimum || format.Maximum) {
        const auto limit = [](std::optional<int> rate) { return rate ? QString::number(*rate) : u"any"_s; };
        text = format.Nominal ? text + u", "_s : QString();
        text += u"%1 to %2 kbit/s"_s.arg(limit(format.Minimum), limit(format.Maximum));
    }
    return text;
}

// The rates that the frames really get: those of MPEG audio for the frequency.
QString Mp3RateText(const Mp3Parameters& set) {
    const auto nearest = [&](int kilobits) { return NearestMp3Bitrate(kilobits, set.SampleRate); };
    switch (set.VbrMethod) {
        case Mp3Parameters::None:
            return u"%1 kbit/s"_s.arg(nearest(set.Bitrate));
        case Mp3Parameters::Abr:
            return u"%1 kbit/s on average"_s.arg(
                std::clamp(int{set.AbrBitrate}, nearest(0), nearest(set.MaxVbrBitrate)));
        default:
            return u"VBR quality %1, up to %2 kbit/s"_s.arg(std::clamp<int>(set.VbrQuality, 0, 9))
                .arg(nearest(set.MaxVbrBitrate));
    }
}

struct TextWriter {
    QString operator()(const PcmFormat& format) const {
        return u"PCM %1, %2 bits"_s.arg(StreamText(format.Rate, format.Channels)).arg(format.Bits);
    }
    QString operator()(const Mp3Format& format) const {
        return u"MPEG Layer-3 %1, %2"_s.arg(StreamText(format.Rate, format.Channels),
                                            Mp3RateText(format.Parameters));
    }
    QString operator()(const VorbisFormat& format) const {
        return u"Ogg Vorbis %1, %2"_s.arg(StreamText(format.Rate, format.Channels), VorbisRateText(format));
    }
    QString operator()(const WmaFormat& format) const {
        return u"Windows Media Audio %1, %2 kbit/s"_s.arg(StreamText(format.Rate, format.Channels))
            .arg(format.Kilobits);
    }
};

struct WriterMaker {
    std::unique_ptr<SoundWriter> operator()(const PcmFormat& format) const {
        return std::make_unique<WavWriter>(format);
    }
    std::unique_ptr<SoundWriter> operator()(const Mp3Format& format) const {
        return std::make_unique<Mp3Writer>(format);
    }
    std::unique_ptr<SoundWriter> operator()(const VorbisFormat& format) const {
        return std::make_unique<VorbisWriter>(format);
    }
    std::unique_ptr<SoundWriter> operator()(const WmaFormat& format) const {
        return std::make_unique<WmaWriter>(format);
    }
};

}  // namespace

StreamFormat StreamOf(const OutputFormat& format) {
    return std::visit([](const auto& one) { return StreamFormat{one.Rate, one.Channels}; }, format);
}

QString TextOf(const OutputFormat& format) {
    return std::visit(TextWriter(), format);
}

std::unique_ptr<SoundWriter> MakeSoundWriter(const OutputFormat& format) {
    return std::visit(WriterMaker(), format);
}

namespace {

ResamplerPrecision PrecisionFor(const OutputFormat& format) {
    const auto* pcm = std::get_if<PcmFormat>(&format);
    return pcm != nullptr && pcm->Bits > 16 ? ResamplerPrecision::Bits28 : ResamplerPrecision::Bits20;
}

}  // namespace

FileWriting::FileWriting(QStringView path, const OutputFormat& format)
    : Format(format), Encoder(MakeSoundWriter(format)), File(path) {}

FileWriting::FileWriting(OutputFile file, const OutputFormat& format, std::unique_ptr<SoundWriter> encoder)
    : Format(format), Encoder(std::move(encoder)), File(std::move(file)) {}

void FileWriting::SetSource(StreamFormat source) {
    if (Worker) throw Failure(FailureNumber::InvalidCall);
    if (source.Rate < 1 || source.Channels < 1) throw Failure(FailureNumber::InvalidCall);
    const StreamFormat target = StreamOf(Format);
    Converter = std::make_unique<StreamConverter>(source, target, PrecisionFor(Format));
}

void FileWriting::Write(AudioBlock block) {
    if (!Converter || Failed) throw Failure(FailureNumber::InvalidCall);
    if (block.Bytes.size() % Converter->SourceFrameSize(block.Type) != 0) {
        throw Failure(FailureNumber::InvalidCall, u"A block of sound ends inside a frame"_s);
    }
    Failed = true;
    const std::size_t most = Converter->SourceBytesAtOnce(block.Type);
    if (block.Bytes.size() <= most) {
        Encode(Converter->Convert(std::move(block)));
    } else {
        EncodeInPieces(block, most);
    }
    Failed = false;
}

void FileWriting::EncodeInPieces(const AudioBlock& block, std::size_t size) {
    std::span<const std::byte> left = block.Bytes;
    while (!left.empty()) {
        const auto piece = left.first(std::min(size, left.size()));
        Encode(Converter->Convert({block.Type, {piece.begin(), piece.end()}, block.Speakers}));
        left = left.subspan(piece.size());
    }
}

void FileWriting::Encode(AudioBlock block) {
    if (block.IsEmpty()) return;
    if (!Worker) Worker.emplace([this](const AudioBlock& one) { Encoder->Write(one, File); });
    Worker->Push(std::move(block));
}

void FileWriting::Close() {
    std::exception_ptr error;
    try {
        if (Converter && !Failed) CompleteFile();
    } catch (...) {
        error = std::current_exception();
    }
    const bool reported = std::exchange(Failed, true);
    Worker.reset();
    try {
        File.Close();
    } catch (...) {
        if (!error && !reported) error = std::current_exception();
    }
    if (error) std::rethrow_exception(error);
}

void FileWriting::CompleteFile() {
    Encode(Converter->Finish());
    if (Worker) Worker->Finish();
    Encoder->Finish(File);
}

}  // namespace Sonmira

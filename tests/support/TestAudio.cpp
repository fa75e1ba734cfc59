#include "support/TestAudio.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace Sonmira {

namespace {

constexpr double Turn = 2 * std::numbers::pi;

template <class Function>
TestSound Make(int rate, int channels, std::int64_t frames, Function&& sample) {
    TestSound sound{rate, channels, {}};
    sound.Samples.reserve(static_cast<std::size_t>(frames * channels));
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        for (int channel = 0; channel < channels; ++channel) {
            sound.Samples.push_back(sample(static_cast<double>(frame)));
        }
    }
    return sound;
}

void PutNumber(QByteArray& bytes, std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i) bytes.append(static_cast<char>(value >> (8 * i)));
}

int BytesOfKind(WavKind kind) {
    switch (kind) {
        case WavKind::Unsigned8:
            return 1;
        case WavKind::Signed16:
            return 2;
        case WavKind::Signed24:
            return 3;
        case WavKind::Signed32:
        case WavKind::Float32:
            return 4;
        case WavKind::Float64:
            return 8;
    }
    return 0;
}

bool IsFloat(WavKind kind) {
    return kind == WavKind::Float32 || kind == WavKind::Float64;
}

std::uint64_t BitsOf(double sample, WavKind kind) {
    if (kind == WavKind::Float64) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &sample, sizeof bits);
        return bits;
    }
    if (kind == WavKind::Float32) {
        const auto narrow = static_cast<float>(sample);
        std::uint32_t bits = 0;
        std::memcpy(&bits, &narrow, sizeof bits);
        return bits;
    }
    const double full = std::ldexp(1.0, BytesOfKind(kind) * 8 - 1);
    const auto value = static_cast<std::int64_t>(std::clamp(std::nearbyint(sample * full), -full, full - 1));
    return static_cast<std::uint64_t>(kind == WavKind::Unsigned8 ? value + 128 : value);
}

}  // namespace

TestSound MakeTone(int rate, int channels, std::int64_t frames, double frequency, double level) {
    return Make(rate, channels, frames,
                [=](double frame) { return level * std::sin(Turn * frequency * frame / rate); });
}

TestSound MakeNoise(int rate, int channels, std::int64_t frames, double level) {
    std::uint64_t state = 1;
    return Make(rate, channels, frames, [&state, level](double) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        return level * (static_cast<double>(state >> 40) / 8388608.0 - 1.0);
    });
}

TestSound MakeSweep(int rate, int channels, std::int64_t frames, double level) {
    const double rise = (rate * 0.49 - 20) / static_cast<double>(std::max<std::int64_t>(frames, 1));
    return Make(rate, channels, frames, [=](double frame) {
        return level * std::sin(Turn * frame * (20 + rise * frame / 2) / rate);
    });
}

TestSound MakeSilence(int rate, int channels, std::int64_t frames) {
    return Make(rate, channels, frames, [](double) { return 0.0; });
}

QByteArray PcmOf(const TestSound& sound, WavKind kind) {
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(sound.Samples.size()) * BytesOfKind(kind));
    for (const double sample : sound.Samples) PutNumber(bytes, BitsOf(sample, kind), BytesOfKind(kind));
    return bytes;
}

QByteArray WavOf(const TestSound& sound, WavKind kind, WavHeader header, std::uint32_t speakers) {
    const QByteArray data = PcmOf(sound, kind);
    const auto size = static_cast<std::uint64_t>(data.size());
    const auto frameSize =
        static_cast<std::uint64_t>(sound.Channels) * static_cast<std::uint64_t>(BytesOfKind(kind));
    const bool extensible = header == WavHeader::Extensible;
    const std::uint64_t tag = IsFloat(kind) ? 3 : 1;
    QByteArray wav("RIFF");
    PutNumber(wav, (extensible ? 60 : 36) + size + size % 2, 4);
    wav += "WAVEfmt ";
    PutNumber(wav, extensible ? 40 : 16, 4);
    PutNumber(wav, extensible ? 0xFFFE : tag, 2);
    PutNumber(wav, static_cast<std::uint64_t>(sound.Channels), 2);
    PutNumber(wav, static_cast<std::uint64_t>(sound.Rate), 4);
    PutNumber(wav, static_cast<std::uint64_t>(sound.Rate) * frameSize, 4);
    PutNumber(wav, frameSize, 2);
    PutNumber(wav, static_cast<std::uint64_t>(BytesOfKind(kind)) * 8, 2);
    if (extensible) {
        PutNumber(wav, 22, 2);
        PutNumber(wav, static_cast<std::uint64_t>(BytesOfKind(kind)) * 8, 2);
        PutNumber(wav, speakers, 4);
        PutNumber(wav, tag, 2);
        wav += QByteArray("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xaa\x00\x38\x9b\x71", 14);
    }
    wav += "data";
    PutNumber(wav, size, 4);
    wav += data;
    if (size % 2 != 0) wav += '\0';
    return wav;
}

std::vector<double> ChannelOf(const TestSound& sound, int channel) {
    std::vector<double> samples;
    const auto step = static_cast<std::size_t>(sound.Channels);
    for (auto i = static_cast<std::size_t>(channel); i < sound.Samples.size(); i += step) {
        samples.push_back(sound.Samples[i]);
    }
    return samples;
}

double LevelAt(const std::vector<double>& samples, int rate, double frequency) {
    double sine = 0;
    double cosine = 0;
    double weights = 0;
    const auto count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        // A window keeps what lies at other frequencies out of the sum.
        const double weight = 0.5 - 0.5 * std::cos(Turn * static_cast<double>(i) / count);
        const double angle = Turn * frequency * static_cast<double>(i) / rate;
        sine += weight * samples[i] * std::sin(angle);
        cosine += weight * samples[i] * std::cos(angle);
        weights += weight;
    }
    return 2 * std::hypot(sine, cosine) / std::max(weights, 1.0);
}

}  // namespace Sonmira

#include "Mp3Encoding.h"

#include "codecs/AudioFile.h"
#include "support/TestFolder.h"
#include "support/Tool.h"

#include <cmath>
#include <numbers>
#include <span>
#include <stdexcept>

namespace Sonmira {

namespace {

constexpr qsizetype HeaderSize = 44;  // of a WAV file
constexpr double Turn = 2 * std::numbers::pi;

std::int64_t FramesOf(int rate, double seconds) {
    return static_cast<std::int64_t>(rate * seconds);
}

}  // namespace

QByteArray EncodedMp3(const Mp3Parameters& parameters, const TestSound& sound) {
    const TestFolder folder;
    AudioFile writer;
    auto set = std::make_shared<Mp3Parameters>(parameters);
    writer.SetFormatMP3Ex(set);
    writer.OpenForWrite(Anew(folder.Path("out.mp3")));
    writer.SetSourceFormat(sound.Rate, sound.Channels);
    const QByteArray pcm = PcmOf(sound, WavKind::Signed16);
    const auto bytes = std::as_bytes(std::span(pcm.constData(), static_cast<std::size_t>(pcm.size())));
    writer.WriteBlock({SampleType::Int16, {bytes.begin(), bytes.end()}});
    writer.CloseFile();
    return ContentOf(folder.Native("out.mp3"));
}

QString Mp3FormatString(const Mp3Parameters& parameters) {
    AudioFile writer;
    auto set = std::make_shared<Mp3Parameters>(parameters);
    writer.SetFormatMP3Ex(set);
    return writer.FormatString();
}

TestSound DecodedMp3(const QByteArray& mp3) {
    const TestFolder folder;
    folder.MakeFile("in.mp3", mp3);
    const ToolResult result = RunTool({"lame", "--quiet", "--decode", folder.Native("in.mp3"), "-"});
    const auto number = [&](qsizetype at, int size) {
        int value = 0;
        for (int i = size - 1; i >= 0; --i) {
            value = value << 8 | static_cast<unsigned char>(result.Output.at(at + i));
        }
        return value;
    };
    if (result.Output.size() < HeaderSize) throw std::runtime_error(result.Errors.toStdString());
    TestSound sound{number(24, 4), number(22, 2), {}};
    for (qsizetype at = HeaderSize; at + 2 <= result.Output.size(); at += 2) {
        sound.Samples.push_back(static_cast<std::int16_t>(number(at, 2)) / 32768.0);
    }
    return sound;
}

TestSound MakeMusic(int rate, int channels, double seconds) {
    TestSound sound = MakeNoise(rate, channels, FramesOf(rate, seconds), 1.0);
    for (std::size_t i = 0; i < sound.Samples.size(); ++i) {
        const auto channel = static_cast<double>(i % static_cast<std::size_t>(channels));
        const std::size_t frame = i / static_cast<std::size_t>(channels);
        const double time = static_cast<double>(frame) / rate;
        double chord = 0;
        for (const double pitch : {220.0, 277.2, 329.6, 880.0, 1760.0, 3520.0}) {
            chord += std::sin(Turn * pitch * time + channel * pitch) * (1 + std::sin(Turn * 3 * time)) / 2;
        }
        // Four hits a second, in turn at the left and at the right.
        const double beat = std::fmod(time, 0.25);
        const bool isHere = channels == 1 || static_cast<int>(time / 0.25) % 2 == static_cast<int>(channel);
        const double hit = isHere ? std::exp(-beat * 90) : 0;
        sound.Samples[i] = 0.07 * chord + 0.5 * hit * sound.Samples[i];
    }
    return sound;
}

TestSound MakeComb(int rate, int channels, double seconds, int step) {
    TestSound sound = MakeSilence(rate, channels, FramesOf(rate, seconds));
    const int tones = rate / 2 / step;
    for (std::size_t i = 0; i < sound.Samples.size(); ++i) {
        const std::size_t frame = i / static_cast<std::size_t>(channels);
        const double time = static_cast<double>(frame) / rate;
        for (int tone = 1; tone < tones; ++tone) {
            // Phases of all kinds keep the peak low.
            sound.Samples[i] += std::sin(Turn * (tone * step * time + 0.37 * tone * tone)) * 0.5 / tones;
        }
    }
    return sound;
}

double GainAt(const TestSound& before, const TestSound& after, double frequency) {
    const double old = LevelAt(ChannelOf(before, 0), before.Rate, frequency);
    const double now = LevelAt(ChannelOf(after, 0), after.Rate, frequency);
    return 20 * std::log10(std::max(now, 1e-9) / std::max(old, 1e-9));
}

}  // namespace Sonmira

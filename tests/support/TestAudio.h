#pragma once

#include <QByteArray>

#include <cstdint>
#include <vector>

// Sound and WAV files that tests make themselves.
namespace Sonmira {

// Interleaved samples, full scale -1 to 1.
struct TestSound {
    int Rate = 44100;
    int Channels = 2;
    std::vector<double> Samples;

    std::int64_t Frames() const { return static_cast<std::int64_t>(Samples.size()) / Channels; }
};

// `level` is the peak. A tone has the same phase in all channels; the noise differs between channels and is
// the same in each run; a sweep rises from 20 Hz to almost half the rate.
TestSound MakeTone(int rate, int channels, std::int64_t frames, double frequency, double level = 0.5);
TestSound MakeNoise(int rate, int channels, std::int64_t frames, double level = 0.5);
TestSound MakeSweep(int rate, int channels, std::int64_t frames, double level = 0.5);
TestSound MakeSilence(int rate, int channels, std::int64_t frames);

enum class WavKind { Unsigned8, Signed16, Signed24, Signed32, Float32, Float64 };
enum class WavHeader { Plain, Extensible };

// The sound as the bytes of a WAV file, rounded to nearest. An extensible header carries `speakers` as its
// channel mask.
QByteArray WavOf(const TestSound& sound, WavKind kind, WavHeader header = WavHeader::Plain,
                 std::uint32_t speakers = 0);
// Only the data part of such a file.
QByteArray PcmOf(const TestSound& sound, WavKind kind);

// Channel `channel` of a sound.
std::vector<double> ChannelOf(const TestSound& sound, int channel);
// The peak level of the part of `samples` at `frequency`: 1.0 for a full tone.
double LevelAt(const std::vector<double>& samples, int rate, double frequency);

}  // namespace Sonmira

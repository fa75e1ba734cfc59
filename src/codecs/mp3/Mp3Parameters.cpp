#include "codecs/mp3/Mp3Parameters.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <span>

namespace Sonmira {

namespace {

constexpr int Off = -1;

struct Preset {
    int SampleRate;
    int Highpass;  // Hz
    int Lowpass;   // Hz
    int LowpassWidth;
    bool ShortBlocks;
    int Quality;
    int Channels;
    int StereoMode;
    int Bitrate;
};

constexpr Preset Presets[] = {
    {8000, 125, 3400, 0, false, 5, 1, 2, 16},      // phone
    {11025, Off, 4000, 0, true, 5, 1, 2, 24},      // short wave
    {16000, Off, 7500, 0, true, 5, 1, 2, 40},      // AM
    {32000, Off, 15000, 0, true, 5, 2, 2, 112},    // FM
    {24000, Off, 12000, 0, false, 5, 1, 2, 56},    // voice
    {44100, Off, 15000, 0, true, 5, 2, 2, 128},    // radio
    {44100, Off, 18000, 900, true, 5, 2, 2, 128},  // tape
    {44100, Off, 18000, 900, true, 2, 2, 2, 160},  // hi-fi
    {44100, Off, Off, 0, true, 2, 2, 1, 192},      // CD
    {44100, Off, Off, 0, true, 2, 2, 1, 256},      // studio
};

Mp3Parameters Vbr(qint32 method, qint16 quality, qint32 lowpass) {
    Mp3Parameters set;
    set.VbrMethod = method;
    set.VbrQuality = quality;
    set.EncoderQuality = 2;
    set.LowpassFrequency = lowpass;
    return set;
}

Mp3Parameters Insane() {
    Mp3Parameters set;
    set.Bitrate = 320;
    set.EncoderQuality = 2;
    set.LowpassFrequency = 20500;
    return set;
}

constexpr int SampleRates[] = {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};

std::span<const int> BitratesOf(int sampleRate) {
    static constexpr int High[] = {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    static constexpr int Low[] = {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
    if (sampleRate >= 32000) return High;
    return sampleRate >= 16000 ? std::span<const int>(Low) : std::span<const int>(Low).first(8);
}

// The later of two that are equally near.
int Nearest(int value, std::span<const int> values) {
    const auto distance = [&](int one) { return std::abs(qint64{one} - value); };
    return *std::min_element(values.rbegin(), values.rend(),
                             [&](int one, int other) { return distance(one) < distance(other); });
}

}  // namespace

void Mp3Parameters::SetPreset(qint16 number) {
    constexpr int R3mix = 11;
    if (number == R3mix) *this = Vbr(Mtrh, 3, 18000);
    if (number < 1 || number > std::ssize(Presets)) return;
    const Preset& preset = Presets[number - 1];
    *this = {};
    SampleRate = preset.SampleRate;
    HighpassFrequency = preset.Highpass;
    LowpassFrequency = preset.Lowpass;
    LowpassWidth = preset.LowpassWidth;
    ShortBlocks = preset.ShortBlocks;
    EncoderQuality = static_cast<qint16>(preset.Quality);
    ChannelCount = preset.Channels;
    StereoMode = preset.StereoMode;
    Bitrate = preset.Bitrate;
}

void Mp3Parameters::SetAltPreset(qint16 number) {
    switch (number) {
        case 1:
            *this = Vbr(Mtrh, 2, 18500);
            break;
        case 2:
            *this = Vbr(Old, 2, 18500);
            break;
        case 3:
            *this = Vbr(Mtrh, 0, 19500);
            break;
        case 4:
            *this = Vbr(Old, 0, 19500);
            break;
        case 5:
            *this = Insane();
            break;
        default:
            break;
    }
}

bool IsMp3Setting(const Mp3Parameters& parameters) {
    return std::find(std::begin(SampleRates), std::end(SampleRates), parameters.SampleRate) !=
               std::end(SampleRates) &&
           (parameters.ChannelCount == 1 || parameters.ChannelCount == 2);
}

int NearestMp3Bitrate(int kilobits, int sampleRate) {
    return Nearest(kilobits, BitratesOf(sampleRate));
}

bool IsMp3Bitrate(int kilobits, int sampleRate) {
    return NearestMp3Bitrate(kilobits, sampleRate) == kilobits;
}

int NearestMp3SampleRate(int rate) {
    return Nearest(rate, SampleRates);
}

}  // namespace Sonmira

#pragma once

#include "codecs/Mp3Parameters.h"

#include <QString>

#include <optional>
#include <variant>

// The formats that the audio file object writes. Rates in Hz, channels 1 or 2.
namespace Sonmira {

struct PcmFormat {
    int Frequency = 44100;
    int Channels = 2;
    int Bits = 16;
};

struct Mp3Format {
    explicit Mp3Format(const Mp3Parameters& parameters)
        : Frequency(parameters.SampleRate), Channels(parameters.ChannelCount), Parameters(parameters) {}

    int Frequency;
    int Channels;
    Mp3Parameters Parameters;
};

// Bit rates in kbit a second. Quality wins where given; a nominal rate alone is held on average, limits
// make the stream managed.
struct VorbisFormat {
    int Frequency = 44100;
    int Channels = 2;
    std::optional<int> Nominal = {};
    std::optional<int> Minimum = {};
    std::optional<int> Maximum = {};
    std::optional<int> Quality = {};  // 0 to 1000, thousandths of the library's base quality
};

// Windows Media Audio, version 2, at a constant bit rate in kbit a second.
struct WmaFormat {
    int Frequency = 44100;
    int Channels = 2;
    int Kilobits = 128;
};

using OutputFormat = std::variant<PcmFormat, Mp3Format, VorbisFormat, WmaFormat>;

int FrequencyOf(const OutputFormat& format);
int ChannelsOf(const OutputFormat& format);

// One line for people, such as "PCM 44100 Hz, Stereo, 16 bits".
QString TextOf(const OutputFormat& format);

// Whether WAV files of that format exist: 8, 16, 24 or 32 bits, 1 to 384000 Hz.
bool IsPcmFormat(const PcmFormat& format);

}  // namespace Sonmira

#pragma once

#include <array>

namespace Sonmira {

struct FormatCaller;

// The WAV format as places in three groups of options: the settings file holds the places, not the values.
struct WavChoice {
    int Frequency = 3;
    int Channel = 1;
    int Bits = 5;
};

inline constexpr std::array WavFrequencies = {96000, 88200, 48000, 44100, 32000, 24000,
                                              22050, 16000, 12000, 11025, 8000,  6000};
inline constexpr std::array WavChannels = {1, 2};
inline constexpr std::array WavBits = {2, 3, 4, 5, 8, 16, 24, 32};

// Writes the keys.
void SaveWavChoice(const WavChoice& choice);

// Gives the format to the caller's encoder and shows what it says; a place outside its group stands for 0.
void SetWavFormat(const FormatCaller& caller, const WavChoice& choice);

// The saved places; a key that is missing or no number stands for that of CD sound.
WavChoice SavedWavChoice();

}  // namespace Sonmira

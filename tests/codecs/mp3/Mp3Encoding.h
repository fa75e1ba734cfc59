#pragma once

#include "codecs/mp3/Mp3Parameters.h"
#include "support/TestAudio.h"

#include <QByteArray>

// MP3 files as the program makes them of a sound, with all that its encoder can be told.
namespace Sonmira {

// The whole file. The sound is brought to the rate and the channels of the parameters, as in a conversion.
QByteArray EncodedMp3(const Mp3Parameters& parameters, const TestSound& sound);
// The line of text for such a format; empty for a refused one.
QString Mp3FormatString(const Mp3Parameters& parameters);
// What another decoder hears in the file, as 16 bits: `lame --decode`, which starts fast.
TestSound DecodedMp3(const QByteArray& mp3);

// Chords with sharp hits, sometimes in the middle and sometimes at one side: something of all that encoders
// treat in ways of their own.
TestSound MakeMusic(int rate, int channels, double seconds);
// Tones of equal level at all multiples of `step` below half the rate.
TestSound MakeComb(int rate, int channels, double seconds, int step);

// In dB, how much louder `after` is than `before` at that frequency, in channel 0.
double GainAt(const TestSound& before, const TestSound& after, double frequency);

}  // namespace Sonmira

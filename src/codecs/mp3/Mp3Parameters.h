#pragma once

#include <QString>

namespace Sonmira {

// All that the MP3 encoder can be told. A new object stands for constant 128 kbit in joint stereo at
// 44100 Hz, with the encoder's own choice of everything else.
//
// The values of the presets and the options of the command line are those that the encoder's own
// documentation gives for its program.
class Mp3Parameters {
public:
    // Ways of spending bits. VBR comes in an old and a new method, of which the newest has a name of its own.
    enum Method : qint32 { None = -1, Default = 0, Old = 1, New = 2, Mtrh = 3, Abr = 4 };

    qint32 MaxVbrBitrate = 320;      // kbit a second; the most that a frame may take with VBR and ABR
    qint16 VbrQuality = 4;           // 0 (best) to 9, with VBR
    qint32 VbrMethod = None;         // one of Method
    qint16 AbrBitrate = 128;         // kbit a second, on average, with ABR
    qint32 StereoMode = 2;           // 1 stereo, 2 joint, 3 joint in every frame, 4 dual channels
    qint16 EncoderQuality = 3;       // 0 (best) to 9 (fastest)
    bool WriteVbrHeader = true;      // with VBR and ABR; players need it to seek and to know the length
    bool BitReservoir = true;        // frames may lend bits to later ones
    bool BlockTypesDiffer = false;   // heard with dual channels only
    bool ShortBlocks = true;         // used where they help
    qint16 Emphasis = 0;             // 0 none, 1 50/15 microseconds, 2 CCITT J.17: a mark in the header
    bool StrictIso = false;          // keeps the reservoir as small as the standard says
    bool EnforceMinBitrate = false;  // with VBR and ABR no frame takes less than Bitrate
    qint16 AthControl = 0;           // threshold of hearing: 0 used, 1 it alone, 2 not, 3 for short blocks
    qint32 LowpassFrequency = -1;    // Hz; negative: the encoder's choice; 0: no filter at all
    qint32 HighpassFrequency = -1;   // the same
    qint32 LowpassWidth = 0;         // Hz; 0: the encoder's choice
    qint32 HighpassWidth = 0;        // the same
    bool ErrorProtection = false;    // a checksum in each frame
    qint32 SampleRate = 44100;       // Hz
    qint32 ChannelCount = 2;         // 1 or 2
    qint32 Bitrate = 128;            // kbit a second; without VBR and ABR that of each frame

    // Sets the other properties to those of a preset: 1 phone, 2 short wave, 3 AM, 4 FM, 5 voice, 6 radio,
    // 7 tape, 8 hi-fi, 9 CD, 10 studio, 11 R3mix. Other numbers change nothing.
    void SetPreset(qint16 number);
    // The same: 1 fast standard, 2 standard, 3 fast extreme, 4 extreme, 5 insane.
    void SetAltPreset(qint16 number);
    // Sets them as the encoder's program would by that command line, starting from a new object. Options that
    // are not known, and values that are none, are passed over; numbers are brought into their range, a
    // sample rate to the next one that MP3 has.
    void SetCommandLine(const QString& line);
};

// Whether an encoder can be set up so: one of the nine sample rates of MPEG audio and one or two channels.
bool IsMp3Setting(const Mp3Parameters& parameters);

// The bit rate nearest to `kilobits` that frames of that sample rate can have (ISO 11172-3 and 13818-3,
// Layer III; the three lowest rates are the "2.5" extension, whose table ends at 64 kbit).
int NearestMp3Bitrate(int kilobits, int sampleRate);
// Whether it is one of those itself.
bool IsMp3Bitrate(int kilobits, int sampleRate);

// The sample rate of MP3 that is nearest to that one.
int NearestMp3SampleRate(int rate);

}  // namespace Sonmira

#pragma once

#include <QtGlobal>

#include <memory>
#include <optional>

struct AVFrame;
struct AVPacket;

namespace Sonmira {

class MediaInput;

// How much sound is missing between the frames that a stream gave and at its end, by the time stamps of its
// packets. Streams whose stamps are only counted by whoever reads them, such as MP3 outside a container, tell
// nothing.
class SoundGaps {
public:
    // `input` must outlive the object.
    explicit SoundGaps(const MediaInput& input);

    // A packet that was read and goes to the decoder.
    void Read(const AVPacket& packet);
    // The packet that was read last could not be decoded.
    void Lose();
    // A frame that came out.
    void Take(const AVFrame& frame);

    // What is missing so far; asked behind the last frame, it takes in what could not be decoded there.
    double Seconds() const;
    // The time at which the last frame ends.
    double End() const { return LastEnd; }

private:
    void TakeAt(double start, double jump);
    double Unheard() const;
    double Unread() const;

    const MediaInput& Input;
    bool Tells = false;
    bool EndsExactly = false;  // where the packets do
    // Stamps count samples: what they say in between may be an estimate, but at last they are right to one.
    // Elsewhere their unit is not that of the sound, so that they drift from it, and only a jump says
    // anything.
    bool CountsSamples = false;
    double LeastJump = 0;      // in seconds; what is less is how the container rounds
    double PacketSeconds = 0;  // of the last packet
    double LastRead = 0;       // the stamp of the last packet
    double PacketsEnd = 0;     // the latest end of a packet
    double Failed = 0;         // of packets that failed since the last frame
    double Missing = 0;
    double Ahead = 0;             // of the sound, where stamps count samples
    double LastEnd = 0;           // of the last frame, by its stamp
    std::optional<double> Clock;  // where the next frame should begin; none at the start of a stream
};

// Whether a codec gives back the very samples that went in. `codec` is one of FFmpeg's numbers.
bool IsLossless(int codec);

class MediaInput;

// Decodes the sound stream of a media file frame by frame. Encoder delay and padding are taken off where
// the file tells them. Packets that cannot be decoded are skipped.
class SoundDecoder {
public:
    // `input` must outlive the decoder. Fails when there is no decoder or it refuses the stream's headers.
    explicit SoundDecoder(MediaInput& input);
    ~SoundDecoder();
    SoundDecoder(const SoundDecoder&) = delete;
    SoundDecoder& operator=(const SoundDecoder&) = delete;

    // The next frame of one or more samples, valid until the next call; null at the end.
    const AVFrame* Next();

    // Packets met so far that could not be decoded, and that could.
    qint64 BadPackets() const { return Bad; }
    qint64 GoodPackets() const { return Sent - Bad; }
    // What is missing between and behind the frames given so far.
    const SoundGaps& Gaps() const { return Missing; }

    // Format by the headers, for a stream of no frames; a rate or count of 0 is not known. The type is a
    // value of AVSampleFormat.
    int Rate() const;
    int Channels() const;
    int SampleFormat() const;

private:
    class Parts;
    bool SendPacket();
    void Lose();

    MediaInput& Input;
    std::unique_ptr<Parts> Libraries;
    bool First = true;
    bool Primes = false;  // the first packet, which holds no sound
    bool Draining = false;
    unsigned FailuresAtEnd = 0;
    qint64 Sent = 0;
    qint64 Bad = 0;
    SoundGaps Missing;
};

}  // namespace Sonmira

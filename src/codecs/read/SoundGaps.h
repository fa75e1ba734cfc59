#pragma once

#include <QtGlobal>

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

}  // namespace Sonmira

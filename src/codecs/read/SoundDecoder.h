#pragma once

#include "codecs/read/SoundGaps.h"

#include <memory>

struct AVFrame;

namespace Sonmira {

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
    bool Draining = false;
    unsigned FailuresAtEnd = 0;
    qint64 Sent = 0;
    qint64 Bad = 0;
    SoundGaps Missing;
};

}  // namespace Sonmira

#pragma once

#include "codecs/FrameSamples.h"
#include "codecs/MediaInput.h"
#include "codecs/SoundDecoder.h"

#include <QStringView>

#include <memory>
#include <optional>

namespace Sonmira {

// Reads the sound of one file of any format that FFmpeg's libraries know, as blocks of interleaved frames
// in the width of the decoder. What cannot be decoded in a damaged file is left out; a file of which
// nothing can be decoded is refused.
class MediaReader {
public:
    // Opens the file at an inner path and decodes its first frames. Fails with a text for people.
    explicit MediaReader(QStringView path);

    // The next frames: whole ones, one at least, and beyond that no more than `size` bytes and no more than
    // a bounded amount. Empty at the end. Fails when the drive does, and at the end when frames of a lossless
    // file were damaged or a good part of a lossy one is missing: what was given is right but not whole.
    AudioBlock Read(qint64 size);

    const StreamFormat& Format() const { return Samples->Format(); }
    // Bytes of one frame.
    std::size_t FrameSize() const { return Samples->FrameSize(); }
    // Frames of the whole file, found out at the first call; may take a reading of the file.
    qint64 Length();

private:
    void DecodeFirst();
    bool DecodeMore();
    std::size_t ReadyBytes();
    bool IsCutShort() const;

    MediaInput Input;
    SoundDecoder Decoder;
    std::unique_ptr<FrameSamples> Samples;
    std::optional<qint64> LengthFound;
    std::optional<qint64> End;  // in frames; what lies behind it is padding
    qint64 FramesGiven = 0;
    std::vector<std::byte> Pending;  // decoded and, from PendingStart on, not yet given
    std::size_t PendingStart = 0;
    bool Ended = false;
};

}  // namespace Sonmira

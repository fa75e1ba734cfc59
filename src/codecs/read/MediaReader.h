#pragma once

#include "codecs/read/FrameSamples.h"
#include "codecs/read/MediaInput.h"
#include "codecs/read/SoundDecoder.h"
#include "codecs/sound/SoundReader.h"

#include <QStringView>

#include <memory>
#include <optional>

namespace Sonmira {

// Reads the sound of one file of any format that FFmpeg's libraries know, as blocks of interleaved frames
// in the width of the decoder. What cannot be decoded in a damaged file is left out; a file of which
// nothing can be decoded is refused.
class MediaReader final : public SoundReader {
public:
    // Opens the file at an inner path, or one that is open already, and decodes its first frames. Fails with
    // a text for people.
    explicit MediaReader(QStringView path);
    explicit MediaReader(std::shared_ptr<const InputFile> file);

    AudioBlock Read(qint64 size) override;
    const StreamFormat& Format() const override { return Samples->Format(); }
    int Bits() const override;
    qint64 Length() override;

    // Bytes of one frame.
    std::size_t FrameSize() const { return Samples->FrameSize(); }
    // The container and its sound stream, for what they say beside the sound.
    const MediaInput& Media() const { return Input; }
    // Whether the file gives back the very samples that it was made from.
    bool IsExact() const;

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

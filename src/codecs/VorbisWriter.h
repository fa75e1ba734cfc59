#pragma once

#include "codecs/SoundWriter.h"

namespace Sonmira {

// Whether the encoder library has a mode for that rate, channel count and bit rate or quality.
bool IsVorbisFormat(const VorbisFormat& format);

// Ogg Vorbis in one logical stream without comments; the last page tells the exact length.
class VorbisWriter final : public SoundWriter {
public:
    // Fails for a format that IsVorbisFormat refuses.
    explicit VorbisWriter(const VorbisFormat& format);
    ~VorbisWriter() override;

    void Write(const AudioBlock& block, OutputFile& file) override;
    void Finish(OutputFile& file) override;

private:
    class Encoder;
    std::unique_ptr<Encoder> Stream;
};

}  // namespace Sonmira

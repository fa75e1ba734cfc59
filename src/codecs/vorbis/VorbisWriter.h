#pragma once

#include "codecs/sound/SoundReader.h"

#include <memory>
#include <optional>

namespace Sonmira {

// Bit rates in kbit a second. Quality wins where given; a nominal rate alone is held on average, limits
// make the stream managed.
struct VorbisFormat {
    int Rate = 44100;
    int Channels = 2;  // 1 or 2
    std::optional<int> Nominal = {};
    std::optional<int> Minimum = {};
    std::optional<int> Maximum = {};
    std::optional<int> Quality = {};  // 0 to 1000, thousandths of the library's base quality
};

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

#pragma once

#include "codecs/sound/SoundReader.h"

#include <memory>
#include <optional>

namespace Sonmira {

// Windows Media Audio, version 2, at a constant bit rate in kbit a second.
struct WmaFormat {
    int Rate = 44100;
    int Channels = 2;  // 1 or 2
    int Kilobits = 128;
};

// The formats that Windows Media Audio is offered in, by numbers from 1 on that users' settings keep: by
// rate, channels and bit rate, each of which the encoder accepts.
inline constexpr int WmaFormatCount = 51;

// None for a number outside 1 to 51.
std::optional<WmaFormat> WmaFormatOf(int number);

// Windows Media Audio 2 in an ASF file without any text. The container cannot tell where the sound ends: a
// player gives less than two blocks of the codec (4096 frames) of silence behind it, and no other gap.
class WmaWriter final : public SoundWriter {
public:
    // Fails when the encoder refuses the format.
    explicit WmaWriter(const WmaFormat& format);
    ~WmaWriter() override;

    void Write(const AudioBlock& block, OutputFile& file) override;
    void Finish(OutputFile& file) override;

private:
    class Encoder;
    std::unique_ptr<Encoder> Stream;
};

}  // namespace Sonmira

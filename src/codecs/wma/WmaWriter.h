#pragma once

#include "codecs/sound/SoundWriter.h"
#include "codecs/wma/WmaFormats.h"

#include <memory>

namespace Sonmira {

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

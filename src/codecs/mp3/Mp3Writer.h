#pragma once

#include "codecs/mp3/LameLibrary.h"
#include "codecs/sound/SoundReader.h"

namespace Sonmira {

struct Mp3Format {
    explicit Mp3Format(const Mp3Parameters& parameters)
        : Rate(parameters.SampleRate), Channels(parameters.ChannelCount), Parameters(parameters) {}

    int Rate;
    int Channels;  // 1 or 2
    Mp3Parameters Parameters;
};

// MPEG audio Layer III without any text tag. Its first frame carries the encoder's delay and padding, so
// that players give back exactly the frames that were encoded.
class Mp3Writer final : public SoundWriter {
public:
    // Fails when the encoder library is missing.
    explicit Mp3Writer(const Mp3Format& format);

    void Write(const AudioBlock& block, OutputFile& file) override;
    void Finish(OutputFile& file) override;

private:
    LameStream Encoder;
    std::vector<std::byte> Encoded;
};

}  // namespace Sonmira

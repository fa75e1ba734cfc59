#pragma once

#include "codecs/sound/SoundReader.h"

#include <memory>

namespace Sonmira {

class InputFile;

// Reads Musepack of stream versions 7 and 8 by the format's own library, which alone gives exactly the
// frames that were encoded.
class MpcReader final : public SoundReader {
public:
    // Fails with a text for people when the file is none of these versions.
    explicit MpcReader(std::shared_ptr<const InputFile> file);
    ~MpcReader() override;
    MpcReader(const MpcReader&) = delete;
    MpcReader& operator=(const MpcReader&) = delete;

    AudioBlock Read(qint64 size) override;
    const StreamFormat& Format() const override { return Stream; }
    int Bits() const override { return 16; }
    qint64 Length() override;

private:
    class Library;
    std::unique_ptr<Library> Handle;
    StreamFormat Stream;
    qint64 FramesGiven = 0;
    bool Ended = false;
};

}  // namespace Sonmira

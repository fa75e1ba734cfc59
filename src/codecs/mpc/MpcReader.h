#pragma once

#include "codecs/sound/SoundReader.h"

#include <QtGlobal>

#include <memory>
#include <optional>

namespace Sonmira {

class InputFile;

// The frames of sound that the header of a Musepack file of stream version 8 counts, if the file is whole:
// its packets follow each other without a gap, and the one that ends the stream ends the file. A packet is
// two letters, its size with these and itself included (7 bits a byte, the upper ones first, the eighth bit
// set on all but the last), and its content; the header's begins with a CRC-32, the version and that count in
// the same form.
std::optional<qint64> LengthOfWholeMpc(const InputFile& file);

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

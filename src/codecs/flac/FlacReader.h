#pragma once

#include "codecs/sound/SoundReader.h"

#include <memory>

namespace Sonmira {

class InputFile;

// Whether the file is plain FLAC, by the head that RFC 9639 gives it, of which FFmpeg would lose something:
// more than 24 bits a sample, or 8 in one channel, whose frames of quiet sound are too small for it.
bool IsForFlacLibrary(const InputFile& file);

// Whether all of a plain FLAC file decodes to the sound of which its head holds the MD5 sum, whatever else
// its head says. Takes as long as the decoding and yields meanwhile (YieldWhileScanning); where `givesUp`,
// asked at each frame, answers true, it ends at once with false.
bool IsSumOfFlacRight(std::shared_ptr<const InputFile> file, const std::function<bool()>& givesUp);

// Reads plain FLAC by the format's own library. It knows samples of 32 bits, which FFmpeg does not, and
// checks the sum over all of them.
class FlacReader final : public SoundReader {
public:
    // Fails with a text for people when the file is no FLAC.
    explicit FlacReader(std::shared_ptr<const InputFile> file);
    ~FlacReader() override;
    FlacReader(const FlacReader&) = delete;
    FlacReader& operator=(const FlacReader&) = delete;

    AudioBlock Read(qint64 size) override;
    const StreamFormat& Format() const override;
    int Bits() const override;
    // 0 where the file does not tell.
    qint64 Length() override;

private:
    friend bool IsSumOfFlacRight(std::shared_ptr<const InputFile> file, const std::function<bool()>& givesUp);
    class Library;
    std::unique_ptr<Library> Handle;
};

}  // namespace Sonmira

#pragma once

#include "codecs/sound/AudioBlock.h"
#include "platform/Failure.h"
#include "platform/Files.h"

#include <functional>

namespace Sonmira {

// The file holds sound, but none that can be decoded, or less than it says.
inline Failure DamagedFile() {
    using namespace Qt::StringLiterals;
    return {FailureNumber::Component, u"The file is damaged"_s};
}

// Some files tell their length, or whether they are whole, only to who reads them to their end, which takes
// seconds. Who has a window hands in what keeps it alive; it is called now and then meanwhile, on the thread
// that asked.
void WhileFilesAreScanned(std::function<void()> yield);
void YieldWhileScanning();

// The sound of one open file, block by block. All calls fail with Failure.
class SoundReader {
public:
    virtual ~SoundReader() = default;

    // The next frames: whole ones, one at least, and beyond that no more than `size` bytes and no more than
    // a bounded amount. Empty at the end. Fails when the drive does, and at the end when the file gave
    // clearly less than it should hold: what was given is right but not whole.
    virtual AudioBlock Read(qint64 size) = 0;

    virtual const StreamFormat& Format() const = 0;
    // The width of PCM that suits the sound: 8, 16, 24 or 32 bits. It holds every sample of a lossless file
    // as it is; a lossy file gets the 16 bits that it was made from.
    virtual int Bits() const = 0;
    // Frames of the whole file, found out at the first call; may take a reading of the file.
    virtual qint64 Length() = 0;

    // Asked many times during that reading: true ends it, with what was counted so far. Also while the end of
    // a damaged file is looked into, which then counts as cut.
    std::function<bool()> GivesUp;
};

// Encodes one stream into a file. Made before the file is, so that a missing encoder leaves the file of an
// earlier run alone. All calls fail with Failure; they may come from one thread after another.
class SoundWriter {
public:
    virtual ~SoundWriter() = default;
    // Whole frames at the rate and channel count of the format, in any sample type.
    virtual void Write(const AudioBlock& block, OutputFile& file) = 0;
    // Writes what is left and completes headers; also makes a valid file of no frames at all. The caller
    // closes the file.
    virtual void Finish(OutputFile& file) = 0;
};

}  // namespace Sonmira

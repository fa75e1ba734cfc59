#pragma once

#include "codecs/ape/ApeFormat.h"
#include "codecs/ape/ApeWork.h"
#include "platform/Files.h"

#include <memory>
#include <optional>
#include <vector>

namespace Sonmira {

// Finds its way in an APE file of version 3990: header, frames, and the parts of the source file that are
// kept word for word. Everything is checked against the size of the file, so that no number in it can ask for
// more memory than the file is worth.
class ApeFileReader {
public:
    // Nothing for a file of another version, which the libraries may read; fails with a text for a damaged
    // one of ours and for anything that is no APE file.
    static std::optional<ApeFileReader> Open(std::shared_ptr<const InputFile> file);

    const PcmFormat& Sound() const { return Format; }
    const ApeLevel& Level() const { return *Shape; }
    qint64 Blocks() const;
    // The source's own header and what followed its sound; places and sizes in bytes.
    qint64 HeadStart() const { return Start + TablesBytes; }
    qint64 HeadBytes() const { return Head; }
    qint64 TailStart() const { return FramesStart() + FrameDataBytes; }
    qint64 TailBytes() const { return Tail; }

    // Only the frames that hold these blocks are given from now on. Returns the first block of them. `start`
    // is before `finish`, and that no more than Blocks().
    qint64 Select(qint64 start, qint64 finish);
    // The next frames, as many as a worker takes at a time, with `padding` zeros behind each; null at the
    // end. It also ends at a frame of which the file has nothing.
    std::unique_ptr<ApeFrameGroup> NextGroup(std::size_t padding);
    // Whether it ended before all frames were given.
    bool IsCutShort() const { return CutShort; }

private:
    explicit ApeFileReader(std::shared_ptr<const InputFile> file) : File(std::move(file)) {}
    bool ReadHeaders();
    void ReadSeekTable(qint64 position);
    qint64 FramesStart() const { return HeadStart() + Head; }
    std::vector<std::uint8_t> FrameBytes(std::size_t frame, std::size_t padding) const;

    std::shared_ptr<const InputFile> File;
    PcmFormat Format;
    const ApeLevel* Shape = nullptr;
    qint64 Start = 0;  // of the descriptor
    qint64 TablesBytes = 0;
    qint64 Head = 0;
    qint64 FrameDataBytes = 0;
    qint64 Tail = 0;
    std::int64_t LastFrameBlocks = 0;
    std::vector<qint64> Frames;  // place of each frame in the frame data, and behind them the end
    std::size_t NextFrame = 0;
    std::size_t EndFrame = 0;
    bool CutShort = false;
};

}  // namespace Sonmira

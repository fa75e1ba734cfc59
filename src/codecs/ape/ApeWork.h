#pragma once

#include "codecs/ape/ApeFormat.h"
#include "codecs/ape/ApeProgress.h"
#include "codecs/ape/Kernels.h"
#include "codecs/ape/Lanes.h"

#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace Sonmira {

// Some neighbouring frames, as many as the lanes hold at most: what one worker encodes or decodes at a time.
struct ApeFrameGroup {
    std::vector<std::byte> Pcm;                     // as in the WAV file, all frames in a row
    std::size_t Blocks = 0;                         // of all frames; all but the last frame are full
    std::vector<std::vector<std::uint8_t>> Frames;  // the coded form of each
    std::size_t Lost = 0;                           // blocks that could not be decoded and are silence
};

constexpr std::size_t MostApeFramesOfAGroup(int channels) {
    return ApeLaneCount / static_cast<std::size_t>(channels);
}

// The checksum of a frame's PCM as the frame keeps it: CRC-32 of ISO 3309 less its lowest bit.
std::uint32_t ApeChecksum(std::span<const std::byte> pcm);

// What a worker tells while it works, and is told.
struct ApeWorkState {
    std::atomic<std::int64_t> BlocksDone = 0;
    std::atomic<bool> Stop = false;
};

// The frame's number in the group, its blocks and the place of its first one.
struct ApeFramePlace {
    std::size_t First = 0;
    std::size_t Blocks = 0;
};
inline ApeFramePlace ApeFramePlaceOf(const ApeFrameGroup& group, const ApeLevel& level, std::size_t frame) {
    const auto full = static_cast<std::size_t>(level.BlocksPerFrame);
    const std::size_t first = std::min(frame * full, group.Blocks);
    return {first, std::min(full, group.Blocks - first)};
}

// Who does the work: for tests and benchmarks, which compare.
struct ApeWorkers {
    unsigned Threads = 0;  // 0 stands for one a core
    const ApeKernels* Kernels = &BestApeKernels();
};

// The run of one file: groups of frames go to the workers and come back in order, while the calling thread
// reads, writes, tells the progress and listens for the stop.
class ApeWork {
public:
    using Worker = std::function<void(ApeFrameGroup&)>;

    // `total` blocks make 100 percent. `groupBytes` is what a group takes in memory, about.
    ApeWork(const ApeWorkers& workers, qint64 total, qint64 groupBytes, const ApeProgressCallback& progress,
            const qint32& killFlag);

    // Whether the run has come to its end, and has not been stopped. `next` gives the next group, null at the
    // end; `done` takes it back. Failures come through once the workers have ended.
    bool Run(const std::function<Worker(ApeWorkState&)>& makeWorker,
             const std::function<std::unique_ptr<ApeFrameGroup>()>& next,
             const std::function<void(ApeFrameGroup&)>& done);

private:
    bool IsStopped();

    unsigned Threads;
    qint64 Total;
    const ApeProgressCallback& Progress;
    const qint32& KillFlag;
    ApeWorkState State;
    std::optional<std::chrono::steady_clock::time_point> LastTold;
};

}  // namespace Sonmira

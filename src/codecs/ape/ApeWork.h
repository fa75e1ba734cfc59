#pragma once

#include "codecs/ape/FrameGroup.h"
#include "codecs/ape/Kernels.h"

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace Sonmira {

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

#include "codecs/ape/ApeWork.h"

#include "codecs/sound/OrderedJobs.h"

#include <zlib.h>

namespace Sonmira {

std::uint32_t ApeChecksum(std::span<const std::byte> pcm) {
    const auto* const bytes = static_cast<const Bytef*>(static_cast<const void*>(pcm.data()));
    return static_cast<std::uint32_t>(crc32_z(0, bytes, pcm.size()) >> 1);
}

namespace {

// The user interface lives on the progress: often enough for a click to be heard at once.
constexpr std::chrono::milliseconds Patience{25};
// What all groups in memory may take together, so that many cores do not mean much memory.
constexpr qint64 MostBytes = 512LL * 1024 * 1024;
// Groups that wait beside those that are being worked on.
constexpr unsigned Spare = 1;

unsigned ThreadsFor(unsigned wanted, qint64 groupBytes) {
    const unsigned cores = wanted > 0 ? wanted : std::max(std::thread::hardware_concurrency(), 1U);
    const qint64 most = std::max<qint64>(MostBytes / std::max<qint64>(groupBytes, 1) - Spare, 1);
    return static_cast<unsigned>(std::min<qint64>(cores, most));
}

// Workers hold tables and buffers of some size: a job takes one that is free, and one is made where all are
// at work.
class WorkerPool {
public:
    explicit WorkerPool(std::function<ApeWork::Worker()> make) : Make(std::move(make)) {}

    void Work(ApeFrameGroup& group) {
        ApeWork::Worker worker = Take();
        if (!worker) worker = Make();
        worker(group);
        const std::lock_guard lock(Guard);
        Free.push_back(std::move(worker));
    }

private:
    ApeWork::Worker Take() {
        const std::lock_guard lock(Guard);
        if (Free.empty()) return {};
        ApeWork::Worker worker = std::move(Free.back());
        Free.pop_back();
        return worker;
    }

    std::function<ApeWork::Worker()> Make;
    std::mutex Guard;
    std::vector<ApeWork::Worker> Free;
};

}  // namespace

ApeWork::ApeWork(const ApeWorkers& workers, qint64 total, qint64 groupBytes,
                 const ApeProgressCallback& progress, const qint32& killFlag)
    : Threads(ThreadsFor(workers.Threads, groupBytes)),
      Total(total),
      Progress(progress),
      KillFlag(killFlag) {}

bool ApeWork::IsStopped() {
    const auto now = std::chrono::steady_clock::now();
    if (Progress && (!LastTold || now - *LastTold >= Patience)) {
        LastTold = now;
        const qint64 done = std::min<qint64>(State.BlocksDone, Total);
        Progress(Total > 0 ? static_cast<qint32>(done * 100'000 / Total) : 0);
    }
    return KillFlag != 0;
}

bool ApeWork::Run(const std::function<Worker(ApeWorkState&)>& makeWorker,
                  const std::function<std::unique_ptr<ApeFrameGroup>()>& next,
                  const std::function<void(ApeFrameGroup&)>& done) {
    using Group = std::unique_ptr<ApeFrameGroup>;
    WorkerPool workers([&] { return makeWorker(State); });
    OrderedJobs<Group> jobs(Threads);
    // Whatever ends this routine, the workers stop soon.
    const std::unique_ptr<ApeWorkState, void (*)(ApeWorkState*)> stop(
        &State, [](ApeWorkState* state) { state->Stop = true; });
    bool isMore = true;
    while (isMore || !jobs.IsIdle()) {
        if (IsStopped()) return false;
        if (isMore && jobs.Pending() < Threads + Spare) {
            Group group = next();
            isMore = group != nullptr;
            if (!isMore) continue;
            jobs.Push([&workers, group = std::move(group)]() mutable {
                workers.Work(*group);
                return std::move(group);
            });
        } else if (const auto group = jobs.Take(Patience)) {
            done(**group);
        }
    }
    if (Progress) Progress(100'000);
    return KillFlag == 0;
}

}  // namespace Sonmira

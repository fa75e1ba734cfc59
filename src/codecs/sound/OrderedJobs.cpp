#include "codecs/sound/OrderedJobs.h"

namespace Sonmira {

namespace {
// Enough to keep both sides busy, few enough to be done with quickly when the user stops.
constexpr std::size_t MostWaiting = 4;
}  // namespace

BlockWorker::BlockWorker(std::function<void(const AudioBlock&)> job)
    : Job(std::move(job)), Thread([this](const std::stop_token& stop) { Run(stop); }) {}

BlockWorker::~BlockWorker() = default;

void BlockWorker::Push(AudioBlock block) {
    std::unique_lock lock(Guard);
    Changed.wait(lock, [this] { return Error || Waiting.size() < MostWaiting; });
    if (Error) std::rethrow_exception(Error);
    Waiting.push_back(std::move(block));
    Changed.notify_all();
}

void BlockWorker::Finish() {
    std::unique_lock lock(Guard);
    Changed.wait(lock, [this] { return Error || (Waiting.empty() && !Working); });
    if (Error) std::rethrow_exception(Error);
}

void BlockWorker::Run(const std::stop_token& stop) {
    std::unique_lock lock(Guard);
    while (Changed.wait(lock, stop, [this] { return !Waiting.empty(); }) && !stop.stop_requested()) {
        const AudioBlock block = std::move(Waiting.front());
        Waiting.pop_front();
        Working = true;
        Changed.notify_all();
        lock.unlock();
        std::exception_ptr error;
        try {
            Job(block);
        } catch (...) {
            error = std::current_exception();
        }
        lock.lock();
        Working = false;
        Error = error;
        Changed.notify_all();
        if (Error) return;
    }
}

}  // namespace Sonmira

#pragma once

#include "codecs/sound/AudioBlock.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace Sonmira {

// Runs jobs on several threads and gives their results back in the order in which the jobs came. All calls
// come from one thread. The destructor drops the jobs that wait and ends after those at hand.
template <class Result>
class OrderedJobs {
public:
    // Beyond this many threads a stream cannot be read and written fast enough, and each holds memory.
    static constexpr unsigned MostThreads = 16;

    // By default one thread a core.
    explicit OrderedJobs(unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, MostThreads))
        : Count(threads) {
        for (unsigned i = 0; i < Count; ++i) {
            Threads.emplace_back([this](const std::stop_token& stop) { Run(stop); });
        }
    }
    ~OrderedJobs() {
        for (std::jthread& thread : Threads) thread.request_stop();
    }
    OrderedJobs(const OrderedJobs&) = delete;
    OrderedJobs& operator=(const OrderedJobs&) = delete;

    // Whether another job would keep a thread busy rather than only wait in memory.
    bool HasRoom() const { return Results.size() < 2 * std::size_t{Count}; }
    // Jobs whose results were not taken yet.
    std::size_t Pending() const { return Results.size(); }
    // Whether every result has been taken.
    bool IsIdle() const { return Results.empty(); }

    // `job` is called once, without arguments, and returns a Result.
    template <class Job>
    void Push(Job job) {
        std::packaged_task<Result()> task(std::move(job));
        Results.push_back(task.get_future());
        const std::lock_guard lock(Guard);
        Waiting.push_back(std::move(task));
        Changed.notify_one();
    }

    // The result of the oldest job that was not taken yet, if it is there within that time. Fails as the job
    // did.
    std::optional<Result> Take(std::chrono::milliseconds time) {
        if (IsIdle() || Results.front().wait_for(time) != std::future_status::ready) return {};
        std::future<Result> result = std::move(Results.front());
        Results.pop_front();
        return result.get();
    }

private:
    void Run(const std::stop_token& stop) {
        std::unique_lock lock(Guard);
        while (Changed.wait(lock, stop, [this] { return !Waiting.empty(); }) && !stop.stop_requested()) {
            std::packaged_task<Result()> task = std::move(Waiting.front());
            Waiting.pop_front();
            lock.unlock();
            task();
            lock.lock();
        }
    }

    unsigned Count;
    std::deque<std::future<Result>> Results;
    std::mutex Guard;
    std::condition_variable_any Changed;
    std::deque<std::packaged_task<Result()>> Waiting;
    std::vector<std::jthread> Threads;  // last, so that they end before what they use
};

// Runs a job for each block, one after the other in the order they come, on a thread of its own. All calls
// come from one other thread.
class BlockWorker {
public:
    // `job` may fail; nothing is done for later blocks then.
    explicit BlockWorker(std::function<void(const AudioBlock&)> job);
    // Ends after the block at hand; those that wait are dropped.
    ~BlockWorker();
    BlockWorker(const BlockWorker&) = delete;
    BlockWorker& operator=(const BlockWorker&) = delete;

    // Hands a block over, waiting while too many are waiting. Fails as the job did.
    void Push(AudioBlock block);
    // Waits until every block is done. Fails as the job did.
    void Finish();

private:
    void Run(const std::stop_token& stop);

    std::function<void(const AudioBlock&)> Job;
    std::mutex Guard;
    std::condition_variable_any Changed;
    std::deque<AudioBlock> Waiting;
    bool Working = false;
    std::exception_ptr Error;
    std::jthread Thread;  // last, so that it ends before what it uses
};

}  // namespace Sonmira

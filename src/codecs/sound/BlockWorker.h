#pragma once

#include "codecs/sound/AudioBlock.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace Sonmira {

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

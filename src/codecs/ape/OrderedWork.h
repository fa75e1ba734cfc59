#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace Sonmira {

// Jobs done on several threads and handed back in the order in which they came. Push and Next are called
// from one other thread.
template <class Job>
class OrderedWork {
public:
    // `makeWorker` is called once on each thread; what it returns does that thread's jobs.
    OrderedWork(unsigned threads, std::function<std::function<void(Job&)>()> makeWorker)
        : MakeWorker(std::move(makeWorker)) {
        for (unsigned i = 0; i < threads; ++i) {
            Threads.emplace_back([this](const std::stop_token& stop) { Run(stop); });
        }
    }
    // Ends after the jobs at hand; those that wait are dropped.
    ~OrderedWork() {
        for (std::jthread& thread : Threads) thread.request_stop();
    }
    OrderedWork(const OrderedWork&) = delete;
    OrderedWork& operator=(const OrderedWork&) = delete;

    void Push(std::unique_ptr<Job> job) {
        const std::lock_guard lock(Guard);
        Entries.push_back(std::make_shared<Entry>());
        Entries.back()->Work = std::move(job);
        Waiting.push_back(Entries.back());
        Changed.notify_all();
    }

    // Jobs that were pushed and not yet handed back.
    std::size_t Count() const { return Entries.size(); }

    // The oldest job, when it is done within that time; else null. Fails as the job did.
    std::unique_ptr<Job> Next(std::chrono::milliseconds patience) {
        if (Entries.empty()) return nullptr;
        std::unique_lock lock(Guard);
        const std::shared_ptr<Entry> oldest = Entries.front();
        if (!Changed.wait_for(lock, patience, [&] { return oldest->Done; })) return nullptr;
        Entries.pop_front();
        if (oldest->Error) std::rethrow_exception(oldest->Error);
        return std::move(oldest->Work);
    }

private:
    struct Entry {
        std::unique_ptr<Job> Work;
        bool Done = false;
        std::exception_ptr Error;
    };

    void Run(const std::stop_token& stop) {
        std::function<void(Job&)> worker;
        std::unique_lock lock(Guard);
        while (Changed.wait(lock, stop, [this] { return !Waiting.empty(); }) && !stop.stop_requested()) {
            const std::shared_ptr<Entry> entry = Waiting.front();
            Waiting.pop_front();
            lock.unlock();
            try {
                if (!worker) worker = MakeWorker();
                worker(*entry->Work);
            } catch (...) {
                entry->Error = std::current_exception();
            }
            lock.lock();
            entry->Done = true;
            Changed.notify_all();
        }
    }

    std::function<std::function<void(Job&)>()> MakeWorker;
    std::mutex Guard;
    std::condition_variable_any Changed;
    std::deque<std::shared_ptr<Entry>> Entries;  // touched by the calling thread only
    std::deque<std::shared_ptr<Entry>> Waiting;
    std::vector<std::jthread> Threads;  // last, so that they end before what they use
};

}  // namespace Sonmira

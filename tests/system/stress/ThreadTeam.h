#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

/// Threads of a stress test.
class ThreadTeam {
public:
    ~ThreadTeam() { Join(); }

    void Add(std::function<void()> work) { threads.emplace_back(std::move(work)); }

    /// Adds a thread that repeats its work until the team is told to stop.
    void AddEndless(std::function<void()> work) {
        threads.emplace_back([this, doWork = std::move(work)] {
            while (!isStopping) {
                doWork();
                std::this_thread::yield();
            }
        });
    }

    /// Waits for all threads; the endless ones end after their current work.
    void Join() {
        isStopping = true;
        for (std::thread& thread : threads) {
            thread.join();
        }
        threads.clear();
    }

private:
    std::atomic<bool> isStopping = false;
    std::vector<std::thread> threads;
};

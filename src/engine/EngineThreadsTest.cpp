#include "kit/engine/EngineFixture.h"

#include <atomic>
#include <functional>
#include <thread>

namespace {

class EngineThreadsTest : public EngineFixture {
protected:
    EngineThreadsTest() { Start(); }

    /// Calls each operation many times, each in its own thread, all at once.
    static void CallAtOnce(const std::vector<std::function<void()>>& operations) {
        constexpr int times = 50;
        std::atomic<std::size_t> ready{0};
        std::vector<std::thread> threads;
        for (const auto& operation : operations) {
            threads.emplace_back([&] {
                ++ready;
                while (ready < operations.size()) {
                    std::this_thread::yield();
                }
                for (int i = 0; i < times; ++i) {
                    operation();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
};

TEST_F(EngineThreadsTest, OperationsFromSeveralThreadsLeaveAConsistentEngine) {
    const InputSets inputs{{Input(L"a.stl")}};
    const auto enqueue = [&] {
        EnqueueJobsInfo request = Request(inputs);
        JobEnqueueResult result;
        EXPECT_TRUE(engine->EnqueueJob(request, result));
    };
    const auto execute = [&] {
        std::vector<JobStatusInfo> updated;
        engine->ExecuteJob(nullptr, updated);
    };
    const auto poll = [&] {
        std::vector<JobStatusInfo> changed;
        engine->CheckUpdate(changed);
        engine->IsCompleted();
    };
    const auto ask = [&] {
        std::vector<JobStatusInfo> statuses;
        engine->CheckJobStatus({L"1", L"2", L"3"}, statuses);
        EXPECT_EQ(statuses.size(), 3U);
    };
    const auto remove = [&] {
        std::vector<std::wstring> ids{L"5", L"10"};
        Lines deleted;
        engine->DeleteJobs(ids, deleted);
    };
    // The process map of the fixture has no lock, so jobs run without a process and end at the next poll.
    script.answer = nullptr;
    CallAtOnce({enqueue, enqueue, execute, poll, ask, remove});
    EXPECT_EQ(engine->knownJobIds.size(), 100U);
    EXPECT_LE(engine->jobList.size(), 100U);
    for (const auto& job : engine->jobList) {
        EXPECT_TRUE(engine->knownJobIds.contains(job->GetId()));
    }
}

} // namespace

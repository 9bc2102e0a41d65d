// Measures the time from the end of a job's process until the job list file and the front ends show it, with the host's
// real loop and a process that this program ends. Prints "notice_median SECONDS". Usage: notice_latency COUNT

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "CommonControllerLib/FunctionManager.h"
#include "Timing.h"
#include "Workplace.h"
#include "controller_host/HostLoop.h"
#include "kit/doubles/LineDouble.h"
#include "platform/processes/Process.h"

namespace {

using Clock = std::chrono::steady_clock;

/// Lists running jobs whose process is an event.
class ObservedEngine : public HostEngine {
public:
    using HostEngine::HostEngine;

    /// Ends the process of the last added job.
    void FinishProcess() { processEnd.Raise(); }

    void AddRunningJob(int number) {
        processEnd.Clear();
        JobListInfo info = FinishedJob(number);
        info.status = JobStatus::Running;
        auto job = std::make_shared<JobEntry>(info);
        job->SetProcessHandle(platform::CopyHandle(processEnd.Handle()));
        const std::lock_guard lock(mutex);
        jobList.push_back(job);
        WriteJobList({{job}, {}}); // takes the job into the index
    }

private:
    platform::Event processEnd;
};

/// The time from the end of the process until the broadcast, which follows the list write.
double SecondsUntilTold(ObservedEngine& engine, LineDouble& line, int number) {
    engine.AddRunningJob(number);
    // Wakes the loop, so that it also waits for the new process.
    if (!line.Deliver(1, L"InitCultureRequest", L"")) {
        throw std::runtime_error("the host takes no requests");
    }
    line.WaitFor(L"InitCultureResponse");
    const auto start = Clock::now();
    engine.FinishProcess();
    line.WaitFor(L"UpdateProgress");
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 200;
    const Workplace workplace;
    const FunctionManager functions({});
    ObservedEngine engine(&functions);
    LineDouble line;
    EngineTransmitter transmitter(line, &line);
    RequestHandler answers(engine, transmitter);
    RequestQueue queue(transmitter, RequestHandler::Names());
    platform::Event stop;
    std::thread loop([&] { HostLoop(engine, queue, answers, stop.Handle()).Run(std::chrono::milliseconds(0)); });
    std::vector<double> seconds;
    for (int number = 1; number <= count; ++number) {
        seconds.push_back(SecondsUntilTold(engine, line, number));
    }
    stop.Raise();
    loop.join();
    std::printf("notice_median %.6f\n", Median(std::move(seconds)));
}

#pragma once

#include "CommonControllerLib/FunctionManager.h"
#include "controller_host/HostLoop.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/LineDouble.h"
#include "kit/doubles/ScriptedProcess.h"
#include "kit/modules/ModuleFiles.h"

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// A host with test doubles for connection, module and processes, and with its own directory, real settings and a real
/// job list.
class HostFixture : public testing::Test {
protected:
    HostFixture();
    ~HostFixture() override;

    /// Runs the host's loop in a thread until the end of the test or `Stop`.
    void StartLoop();
    /// Requests the end of the host and waits for it.
    void Stop();
    /// Waits until the loop ends by itself.
    void WaitForTheEnd();

    /// A message with one text or several.
    static std::wstring Ids(const std::wstring& name, const std::vector<std::wstring>& ids);
    /// A request for this many jobs with one input each.
    std::wstring EnqueueRequest(std::size_t jobs) const;
    JobEnqueueResult Enqueue(std::size_t jobs);
    /// Waits until a job with this status was broadcast, and returns the report.
    JobStatusInfo WaitForStatus(JobStatus status);

    TemporaryDirectory directory;
    test_modules::Script script;
    test_modules::ScriptedModule module{test_modules::ModulePath(L"recording_module_a"), script};
    /// One per started job, in order.
    std::list<ScriptedProcess> processes;
    LineDouble line;
    EngineTransmitter transmitter{line, &line};
    std::unique_ptr<FunctionManager> functions;
    std::unique_ptr<HostEngine> engine;
    std::unique_ptr<RequestHandler> answers;
    std::unique_ptr<RequestQueue> queue;
    platform::Event stop;

private:
    std::thread loop;
};

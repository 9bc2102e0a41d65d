#pragma once

#include "kit/Deadline.h"
#include "kit/TemporaryDirectory.h"
#include "kit/TestClient.h"
#include "kit/TestProcess.h"
#include "platform/processes/Process.h"
#include "platform/system/OwnedHandle.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// Settings in a temporary directory, and hosts that use them: real processes with the real modules. The file of a
/// scenario lists its steps (see the program test_scenario); "inputs.txt" is the input of each job.
class HostProcessFixture : public testing::Test {
protected:
    HostProcessFixture();
    /// Ends the host if it still runs.
    ~HostProcessFixture() override;

    /// The command that starts the host with these settings.
    platform::ProcessStart Host(const std::vector<std::wstring>& arguments) const;
    /// The command that starts a command-line front end with these settings: the name of its program, then its
    /// arguments. Its response timeout is shorter than that of the test, so that its message about a missing
    /// response is seen.
    platform::ProcessStart FrontEndProcess(const std::vector<std::wstring>& commandLine,
                                           std::chrono::seconds wait = test_support::timeout / 2) const;
    /// Starts a host and returns when front ends can reach it.
    void StartHost();
    /// Waits until the host ends by itself, and returns its exit code.
    std::int32_t AwaitHostEnd();
    /// Waits until no host runs with these settings, whoever started it.
    void AwaitNoHost() const;

    void WriteSettings(const std::string& text) const;
    /// The default settings of the tests; `jobList` is the job list file.
    std::string UsualSettings(const std::string& jobList) const;

    /// Writes a scenario with these steps and a jobs file that runs it `count` times; returns the path of the jobs
    /// file.
    std::wstring JobsFile(const std::string& steps, int count = 1);
    /// The same for an existing scenario file in the temporary directory.
    std::wstring JobsFileFor(const std::string& scenario, int count) const;

    /// Writes a job list of 5,000 ended jobs, ids and numbers from 1, before the start of a host: a response of several
    /// megabytes.
    void SaveLongList() const;

    /// Polls until a condition holds for which there is no event.
    static void Await(const std::string& what, const std::function<bool()>& condition);

    std::wstring WorkDirOf(const std::wstring& jobId) const;

    const TemporaryDirectory directory;
    const std::wstring endpointName;
    platform::OwnedHandle host;

private:
    int scenarios = 0;
};

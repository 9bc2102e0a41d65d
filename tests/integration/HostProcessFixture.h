#pragma once

#include "kit/TestClient.h"
#include "platform/processes/Process.h"
#include "platform/processes/ProcessHandle.h"
#include "support/Deadline.h"
#include "support/TemporaryDirectory.h"
#include "support/TestProcess.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// Settings of their own in a temporary directory, and hosts that use them: real processes with the real modules. What
/// a scenario does stands in its file (see the program test_scenario); "inputs.txt" is the input of every job.
class HostProcessFixture : public testing::Test {
protected:
    HostProcessFixture();
    /// Ends the host that the test left running.
    ~HostProcessFixture() override;

    /// How to start the host with these settings.
    platform::ProcessStart Host(const std::vector<std::wstring>& arguments) const;
    /// How to start the command-line front end with them. It waits for an answer for less than the test waits for it:
    /// what it has to say about an answer that does not come is then seen.
    platform::ProcessStart FrontEndProcess(const std::vector<std::wstring>& arguments,
                                           std::chrono::seconds wait = test_support::patience / 2) const;
    /// Starts a host and returns when front ends can reach it.
    void StartHost();
    /// Waits until the host has ended by itself; its exit code.
    std::int32_t AwaitHostEnd();
    /// Waits until no host runs with these settings, whoever started it.
    void AwaitNoHost() const;

    void WriteSettings(const std::string& text) const;
    /// The settings that the tests use unless they write others; `jobList` names the job list file.
    std::string UsualSettings(const std::string& jobList) const;

    /// Writes a scenario that performs steps, and a jobs file that runs it `count` times; the path of that file.
    std::wstring JobsFile(const std::string& steps, int count = 1);
    /// The same for the scenario file `scenario`, which stands in the temporary directory.
    std::wstring JobsFileFor(const std::string& scenario, int count) const;

    /// Makes the job list, before the start of a host, one of 5,000 jobs that have ended, ids and numbers from 1 on: an
    /// answer of several megabytes for whom asks for it.
    void SaveLongList() const;

    /// Waits until a condition holds that nothing tells of.
    static void Await(const std::string& what, const std::function<bool()>& condition);

    std::wstring WorkDirOf(const std::wstring& jobId) const;

    const TemporaryDirectory directory;
    const std::wstring endpointName;
    platform::OwnedHandle host;

private:
    int scenarios = 0;
};

#include "kit/processes/HostProcessFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include <fstream>

#include "platform/processes/Process.h"

namespace {

/// Invalid reports: the host does not block on them or read them whole, and keeps responding.
class HostileReportsTest : public HostProcessFixture {
protected:
    /// Runs a scenario that replaces a report, and returns the final status of its job.
    JobStatusInfo RunJob(TestClient& frontEnd, const std::string& steps, JobStatus final) {
        const std::wstring id = frontEnd.Enqueue(JobsFile(steps)).at(0).id;
        return frontEnd.AwaitStatus(id, final);
    }

    /// The peak memory of the host.
    long HostKibibytes() const {
        std::ifstream status("/proc/" + std::to_string(platform::ProcessNumber(host.Get())) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("VmHWM:")) {
                return std::stol(line.substr(6));
            }
        }
        return 0;
    }
};

const std::vector<std::string>& BadBehaviours() {
    static const std::vector<std::string> misdeeds = {"make named pipe NAME",          "make folder NAME",
                                                      "make sparse file NAME",         "make link NAME /dev/zero",
                                                      "make link NAME /proc/self/mem", "make link NAME NAME"};
    return misdeeds;
}

std::string For(const std::string& name, std::string misdeed) {
    for (std::size_t at = misdeed.find("NAME"); at != std::string::npos; at = misdeed.find("NAME")) {
        misdeed.replace(at, 4, name);
    }
    return misdeed + "\n";
}

} // namespace

TEST_F(HostileReportsTest, WhateverStandsInThePlaceOfTheProgressDoesNoHarm) {
    StartHost();
    TestClient frontEnd(endpointName);
    const long before = HostKibibytes();
    for (const std::string& misdeed : BadBehaviours()) {
        const std::string steps = For("progress_info_list.json", misdeed) + "be ready\nwait for file go\nexit 0";
        const std::wstring id = frontEnd.Enqueue(JobsFile(steps)).at(0).id;
        frontEnd.AwaitStatus(id, JobStatus::Running);
        AwaitFile(WorkDirOf(id), L"ready");
        EXPECT_FALSE(frontEnd.Jobs().empty()) << misdeed;
        WriteTextFile(WorkDirOf(id) + L"\\go", "");
        frontEnd.AwaitStatus(id, JobStatus::Success);
    }
    constexpr long most = 50 * 1024;
    EXPECT_LT(HostKibibytes() - before, most);
}

TEST_F(HostileReportsTest, WhateverStandsInThePlaceOfTheResultFailsTheJob) {
    StartHost();
    TestClient frontEnd(endpointName);
    for (const std::string& misdeed : BadBehaviours()) {
        RunJob(frontEnd, For("run_scenario_result.json", misdeed) + "exit 0", JobStatus::Failed);
    }
    RunJob(frontEnd, "exit 0", JobStatus::Success);
}

TEST_F(HostileReportsTest, WhatAScenarioPutIntoTheDirectoryOfTheNextJobDoesNotCount) {
    StartHost();
    TestClient frontEnd(endpointName);
    const auto jobs = frontEnd.Enqueue(JobsFile("wait for file go\nexit 3", 2));
    frontEnd.AwaitStatus(jobs.at(0).id, JobStatus::Running);
    WriteTextFile(WorkDirOf(jobs.at(1).id) + L"\\run_scenario_result.json",
                  R"({"version":1,"jobId":"another","succeeded":true})");
    WriteTextFile(WorkDirOf(jobs.at(1).id) + L"\\killprocess", "");
    WriteTextFile(WorkDirOf(jobs.at(1).id) + L"\\go", "");
    WriteTextFile(WorkDirOf(jobs.at(0).id) + L"\\go", "");
    frontEnd.AwaitStatus(jobs.at(0).id, JobStatus::Failed);
    frontEnd.AwaitStatus(jobs.at(1).id, JobStatus::Failed);
}

#include "system/faults/FaultFixture.h"

#include "kit/OtherProcesses.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

#include <algorithm>

namespace {

constexpr int ended = 0;
constexpr int couldNotRun = 1;
constexpr int alreadyRunning = 4;

class HostStartTest : public FaultFixture {
protected:
    /// Starts a host that is expected to refuse, and returns its message.
    std::string ExpectRefusal(int exitCode) const {
        const test_support::Ending ending = test_support::RunToEnd(Host({}));
        EXPECT_EQ(ending.exitCode, exitCode) << ending.output;
        return ending.output;
    }

    /// Starts hosts at the same time, waits until all but one have ended, and returns their exit codes.
    std::vector<std::int32_t> StartTogether(std::size_t count) {
        std::vector<platform::OwnedHandle> hosts(count);
        for (platform::OwnedHandle& started : hosts) {
            EXPECT_TRUE(platform::StartProcess(Host({}), started));
        }
        Await("the end of all hosts but one", [&] {
            return std::count_if(hosts.begin(), hosts.end(),
                                 [](const auto& one) { return platform::IsProcessRunning(one.Get()); }) <= 1;
        });
        return Sorted(hosts);
    }

    std::vector<std::int32_t> Sorted(std::vector<platform::OwnedHandle>& hosts) {
        std::vector<std::int32_t> codes;
        for (platform::OwnedHandle& one : hosts) {
            if (platform::IsProcessRunning(one.Get())) {
                host = std::move(one);
            } else {
                codes.push_back(platform::ExitCode(one.Get()).value_or(-1));
            }
        }
        return codes;
    }

    void SaveTwoJobs() {
        StartHost();
        TestClient frontEnd(endpointName);
        ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
        frontEnd.Terminate();
        ASSERT_EQ(AwaitHostEnd(), ended);
    }
};

TEST_F(HostStartTest, OfHostsThatStartTogetherExactlyOneRunsAndTheListIsWhole) {
    SaveTwoJobs();
    constexpr int rounds = 8;
    constexpr std::size_t hosts = 4;
    for (int round = 0; round < rounds; ++round) {
        EXPECT_EQ(StartTogether(hosts), std::vector<std::int32_t>(hosts - 1, alreadyRunning));
        EXPECT_EQ(SavedJobs().size(), 2U);
        ASSERT_TRUE(platform::IsProcessRunning(host.Get()));
        test_support::KillProcess(host.Get());
        AwaitHostEnd();
    }
    EXPECT_TRUE(BesideList(L".corrupt-").empty());
    EXPECT_EQ(CountInLog("another host is running for the job list"), rounds * static_cast<int>(hosts - 1));
}

TEST_F(HostStartTest, TheLockOfADeadHostIsNoLockWhateverItHolds) {
    WriteTextFile(listFile + L".lock", std::string("4711\0\xFF", 6));
    SaveTwoJobs();
    EXPECT_EQ(SavedJobs().size(), 2U);
}

TEST_F(HostStartTest, ADirectoryInThePlaceOfTheLockIsNamed) {
    WriteTextFile(listFile + L".lock\\inside.txt", "");
    const std::string said = ExpectRefusal(couldNotRun);
    EXPECT_NE(said.find("job_list.json.lock"), std::string::npos) << said;
    EXPECT_NE(said.find("can be removed while no host runs"), std::string::npos) << said;
}

TEST_F(HostStartTest, ADamagedListIsReplacedByItsBackupAndKept) {
    SaveTwoJobs();
    const std::string whole = ReadTextFile(listFile);
    WriteTextFile(listFile, whole.substr(0, whole.size() / 2));
    StartHost();
    TestClient frontEnd(endpointName);
    EXPECT_EQ(frontEnd.Jobs().size(), 2U);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    const std::vector<JobListInfo> jobs = frontEnd.Jobs();
    ASSERT_EQ(jobs.size(), 3U);
    EXPECT_EQ(jobs.back().seqId, 3);
    Await("the saved list", [&] { return SavedJobs().size() == 3; });
    ASSERT_EQ(BesideList(L".corrupt-").size(), 1U);
    EXPECT_EQ(ReadTextFile(BesideList(L".corrupt-")[0]), whole.substr(0, whole.size() / 2));
}

TEST_F(HostStartTest, ADamagedListWithoutABackupIsToldByEveryHostUntilItIsDealtWith) {
    WriteTextFile(listFile, "no list");
    StartHost();
    TestClient(endpointName).Terminate();
    ASSERT_EQ(AwaitHostEnd(), ended);
    ASSERT_EQ(BesideList(L".corrupt-").size(), 1U);
    const std::string told = "kept as " + text::ToUtf8(platform::ToNativeText(BesideList(L".corrupt-")[0])) + ":";
    EXPECT_EQ(CountInLog(told), 1) << Log();
    SaveTwoJobs();
    EXPECT_EQ(CountInLog(told), 2) << Log();
    ASSERT_TRUE(platform::RemoveFile(BesideList(L".corrupt-")[0]));
    StartHost();
    EXPECT_EQ(CountInLog(told), 2) << Log();
}

TEST_F(HostStartTest, AListOfANewerVersionIsNotTouchedAndNoHostRuns) {
    const std::string newer = R"({"version":99,"JobList":[{"id":"a"}]})";
    WriteTextFile(listFile, newer);
    const std::string said = ExpectRefusal(couldNotRun);
    EXPECT_NE(said.find("version"), std::string::npos) << said;
    EXPECT_NE(said.find("job_list.json"), std::string::npos) << said;
    EXPECT_EQ(ReadTextFile(listFile), newer);
    EXPECT_EQ(BesideList(L".corrupt-"), std::vector<std::wstring>());
}

} // namespace

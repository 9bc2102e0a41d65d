#include "system/faults/FaultFixture.h"
#include "system/faults/posix/NameSpaceRun.h"
#include "system/faults/posix/Privileges.h"
#include "system/faults/posix/SmallDisk.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "text/Text.h"

#include <optional>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int couldNotRun = 1;

/// Each test runs in a child process with its own mount name space.
class DiskFaultsTest : public FaultFixture {
protected:
    void SetUp() override {
        if (IsInOwnNameSpace()) {
            disk.emplace(directory / L"disk");
            if (!disk->Problem().empty()) {
                GTEST_SKIP() << disk->Problem();
            }
        }
    }

    /// Call first. True in the parent, which has nothing more to do.
    static bool HasRunInChild() {
        if (!IsInOwnNameSpace()) {
            RunThisTestInOwnNameSpace();
        }
        return !IsInOwnNameSpace();
    }

    std::optional<SmallDisk> disk;
};

std::string MountNameSpace() {
    char name[64] = {};
    return readlink("/proc/self/ns/mnt", name, sizeof name - 1) < 0 ? "" : name;
}

TEST_F(DiskFaultsTest, ThisProgramStaysInItsOwnMountNameSpace) {
    static const std::string before = MountNameSpace();
    if (HasRunInChild()) {
        EXPECT_EQ(MountNameSpace(), before);
        return;
    }
    EXPECT_NE(before, "");
}

TEST_F(DiskFaultsTest, JobsGoOnWhileTheListCannotBeWrittenAndItIsWrittenOnceThereIsRoom) {
    if (HasRunInChild()) {
        return;
    }
    Place("disk/job_list.json", "controller.log", "work");
    StartHost();
    {
        TestClient frontEnd(endpointName);
        ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
        disk->Fill();
        // The last block of the journal has room for a few jobs.
        ExpectJobs(frontEnd, "exit 0", 30, JobStatus::Success);
        EXPECT_LT(SavedJobs().size(), 31U);
        EXPECT_EQ(CountInLog("The job list cannot be written: "), 1);
        EXPECT_EQ(CountInLog("No space left on device"), 1);

        disk->Free(); // no requests from here on
        Await("the saved list", [this] { return SavedJobs().size() == 31; });
        AwaitLog("is written again, after failed attempts: ");
    }
    RestartHost();
    TestClient frontEnd(endpointName);
    EXPECT_EQ(frontEnd.Jobs().size(), 31U);
    EXPECT_TRUE(BesideList(L".corrupt-").empty());
    // The host writes the list when it is idle.
    Await("no unfinished list", [this] { return BesideList(L".tmp-").empty(); });
}

TEST_F(DiskFaultsTest, AHostThatEndsOnAFullDiskLeavesTheListBeforeWhole) {
    if (HasRunInChild()) {
        return;
    }
    Place("disk/job_list.json", "controller.log", "work");
    StartHost();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    // The response comes in a later turn of the host, after it has dropped the old backup, which would free space.
    ASSERT_EQ(frontEnd.Jobs().size(), 1U);
    const std::vector<JobListInfo> before = SavedJobs();
    disk->Fill();
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    frontEnd.Terminate();
    EXPECT_EQ(AwaitHostEnd(), 0);
    // The last block of the journal has room for a change or two.
    EXPECT_EQ(SavedJobs().at(0), before.at(0));
}

TEST_F(DiskFaultsTest, AJobWhoseWorkDirectoryCannotBeWrittenHasFailedAndTheLogSaysWhy) {
    if (HasRunInChild()) {
        return;
    }
    Place("job_list.json", "controller.log", "disk/work");
    StartHost();
    TestClient frontEnd(endpointName);
    disk->Fill();
    ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Failed);
    EXPECT_GE(CountInLog("No space left on device"), 2) << Log();
    disk->Free();
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
}

TEST_F(DiskFaultsTest, AScenarioThatFillsTheDiskWithItsOutputEndsAndTheQueueGoesOn) {
    if (HasRunInChild()) {
        return;
    }
    Place("job_list.json", "controller.log", "disk/work");
    StartHost();
    TestClient frontEnd(endpointName);
    constexpr std::size_t room = 64 * 1024;
    disk->FillBut(room);
    ExpectJobs(frontEnd, "print lines 50000\nexit 0", 1, JobStatus::Failed);
    disk->Free();
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
}

TEST_F(DiskFaultsTest, AFullDiskUnderTheLogLosesMessagesAndNoJob) {
    if (HasRunInChild()) {
        return;
    }
    Place("job_list.json", "disk/controller.log", "work");
    StartHost();
    TestClient frontEnd(endpointName);
    disk->Fill();
    ExpectJobs(frontEnd, "print hello", 100, JobStatus::Success);
    disk->Free();
    ExpectJobs(frontEnd, "print hello", 1, JobStatus::Success);
    EXPECT_EQ(CountInLog("(Messages that could not be written here: "), 1);
    EXPECT_EQ(SavedJobs().size(), 101U);
}

TEST_F(DiskFaultsTest, ADirectoryThatIsReadOnlyForAWhileIsLikeAFullDisk) {
    if (HasRunInChild()) {
        return;
    }
    Place("disk/job_list.json", "disk/controller.log", "disk/work");
    StartHost();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    disk->MakeReadOnly();
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Failed);
    disk->MakeWritable();
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    Await("the saved list", [this] { return SavedJobs().size() == 3; });
}

TEST_F(DiskFaultsTest, AHostWhoseListDirectoryIsReadOnlySaysSoAndEnds) {
    if (HasRunInChild()) {
        return;
    }
    Place("disk/lists/job_list.json", "controller.log", "work");
    disk->MakeReadOnly();
    const test_support::Ending ending = test_support::RunToEnd(Host({}));
    EXPECT_EQ(ending.exitCode, couldNotRun);
    EXPECT_NE(ending.output.find("Read-only file system"), std::string::npos) << ending.output;
}

/// A host whose directories are moved or removed.
using DiskFaultsTest_Directories = FaultFixture;

TEST_F(DiskFaultsTest_Directories, AListDirectoryThatWasRemovedIsMadeAgainWithTheWholeList) {
    Place("lists/job_list.json", "lists/controller.log", "work");
    StartHost();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
    // The host may be writing into it.
    Await("the removal", [this] { return static_cast<bool>(platform::RemoveTree(directory / L"lists")); });
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    Await("the saved list", [this] { return SavedJobs().size() == 3; });
}

TEST_F(DiskFaultsTest_Directories, AListDirectoryThatWasRenamedIsMadeAgainWithTheWholeList) {
    Place("lists/job_list.json", "controller.log", "work");
    StartHost();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
    ASSERT_TRUE(platform::RenameFile(directory / L"lists", directory / L"old_lists"));
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    Await("the saved list", [this] { return SavedJobs().size() == 3; });
}

TEST_F(DiskFaultsTest_Directories, AWorkDirectoryThatWasRemovedUnderARunningJobFailsItAloneAndIsMadeAgain) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring id = frontEnd.Enqueue(JobsFile("be ready\nwait for request")).at(0).id;
    Await("the scenario", [&] { return platform::Exists(WorkDirOf(id) + L"\\ready"); });
    ASSERT_TRUE(platform::RenameFile(directory / L"work", directory / L"old_work"));
    frontEnd.Cancel(id);
    frontEnd.AwaitStatus(id, JobStatus::Canceled);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
}

TEST_F(DiskFaultsTest_Directories, ALockThatIsALinkIsNotFollowed) {
    ASSERT_EQ(symlink("/dev/null", text::ToUtf8(platform::ToNativeText(listFile + L".lock")).c_str()), 0);
    const test_support::Ending ending = test_support::RunToEnd(Host({}));
    EXPECT_EQ(ending.exitCode, couldNotRun);
    EXPECT_NE(ending.output.find("job_list.json.lock"), std::string::npos) << ending.output;
}

/// Runs as a user to whom permissions apply.
class DiskFaultsTest_Permissions : private OrdinaryUser, public FaultFixture {
protected:
    void SetUp() override {
        const std::string problem = OrdinaryUser::Problem(Host({}).program);
        if (!problem.empty()) {
            GTEST_SKIP() << problem;
        }
    }

    static void Allow(const std::wstring& path, mode_t mode) {
        ASSERT_EQ(chmod(text::ToUtf8(platform::ToNativeText(path)).c_str(), mode), 0);
    }

    /// Starts a host that has a directory each for its list, log and jobs.
    void StartHostWithDirectories() {
        Place("lists/job_list.json", "logs/controller.log", "work");
        WriteTextFile(directory / L"work\\empty", "");
        StartHost();
    }
    void AllowDirectories(mode_t mode) const {
        for (const wchar_t* part : {L"lists", L"logs", L"work"}) {
            Allow(directory / part, mode);
        }
    }
};

TEST_F(DiskFaultsTest_Permissions, AListThatMayNotBeReadIsNotTakenForNone) {
    WriteTextFile(listFile, R"({"JobList":[{"id":"a"}]})");
    Allow(listFile, 0000);
    const test_support::Ending ending = test_support::RunToEnd(Host({}));
    EXPECT_EQ(ending.exitCode, couldNotRun);
    EXPECT_NE(ending.output.find("job_list.json: Permission denied"), std::string::npos) << ending.output;
    Allow(listFile, 0600);
    EXPECT_EQ(SavedJobs().size(), 1U);
    EXPECT_TRUE(BesideList(L".corrupt-").empty());
}

TEST_F(DiskFaultsTest_Permissions, ALockThatMayNotBeOpenedIsNamed) {
    WriteTextFile(listFile + L".lock", "");
    Allow(listFile + L".lock", 0000);
    const test_support::Ending ending = test_support::RunToEnd(Host({}));
    EXPECT_EQ(ending.exitCode, couldNotRun);
    EXPECT_NE(ending.output.find("job_list.json.lock, cannot be taken: Permission denied"), std::string::npos)
        << ending.output;
}

TEST_F(DiskFaultsTest_Permissions, WhatMayNotBeWrittenForAWhileIsWrittenAfterwards) {
    StartHostWithDirectories();
    TestClient frontEnd(endpointName);
    AllowDirectories(0500);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Failed);
    EXPECT_EQ(SavedJobs().size(), 0U);
    AllowDirectories(0700);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    EXPECT_EQ(SavedJobs().size(), 2U);
    EXPECT_EQ(CountInLog("The job list cannot be written: "), 1);
}

TEST_F(DiskFaultsTest_Permissions, AnOpenJournalIsWrittenInADirectoryThatMayNotBeWritten) {
    StartHostWithDirectories();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    AllowDirectories(0500);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Failed);
    EXPECT_EQ(SavedJobs().size(), 2U);
    AllowDirectories(0700);
}

} // namespace

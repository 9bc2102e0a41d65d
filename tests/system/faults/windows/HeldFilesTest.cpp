#include "system/faults/FaultFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/Deadline.h"
#include "platform/processes/Waiting.h"

#include <chrono>
#include <thread>
#include <utility>

#include <windows.h>

namespace {

/// A file that this process holds open without sharing, as some virus scanners and backup programs do.
class HeldFile {
public:
    /// Waits until no other process has it open: the host may still be writing.
    explicit HeldFile(const std::wstring& path) {
        const test_support::Deadline deadline("a file that can be held");
        while (!Hold(path) && GetLastError() == ERROR_SHARING_VIOLATION) {
            std::this_thread::yield();
        }
        EXPECT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    }
    ~HeldFile() { LetGo(); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    void LetGo() {
        if (handle != INVALID_HANDLE_VALUE) {
            CloseHandle(std::exchange(handle, INVALID_HANDLE_VALUE));
        }
    }

private:
    bool Hold(const std::wstring& path) {
        handle =
            CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        return handle != INVALID_HANDLE_VALUE;
    }

    HANDLE handle = INVALID_HANDLE_VALUE;
};

using HeldFilesTest = FaultFixture;

TEST_F(HeldFilesTest, AListThatIsHeldIsWrittenOnceItIsFree) {
    WriteTextFile(listFile, R"({"JobList":[{"id":"a"}]})");
    StartHost();
    TestClient frontEnd(endpointName);
    HeldFile held(listFile);
    ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
    EXPECT_EQ(CountInLog("The job list cannot be written: "), 1) << Log();
    held.LetGo();
    Await("the saved list", [this] { return SavedJobs().size() == 3; });
    EXPECT_TRUE(BesideList(L".corrupt-").empty());
}

TEST_F(HeldFilesTest, AListThatIsHeldAtTheStartIsNotTakenForNone) {
    WriteTextFile(listFile, R"({"JobList":[{"id":"a"}]})");
    HeldFile held(listFile);
    const test_support::Ending ending = test_support::RunToEnd(Host({}));
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_NE(ending.output.find("the job list cannot be used"), std::string::npos) << ending.output;
    held.LetGo();
    EXPECT_EQ(SavedJobs().size(), 1U);
}

TEST_F(HeldFilesTest, AResultThatIsHeldForAMomentIsRead) {
    const std::wstring path = directory / L"run_scenario_result.json";
    WriteTextFile(path, R"({"version":1,"jobId":"a","succeeded":true})");
    HeldFile held(path);
    std::thread holder([&held] {
        constexpr std::chrono::milliseconds moment{20};
        platform::WaitForAny({}, moment);
        held.LetGo();
    });
    bool succeeded = false;
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> files;
    EXPECT_TRUE(ControllerCSWrapper::ParseRunScenarioResult(path, succeeded, messages, files));
    EXPECT_TRUE(succeeded);
    holder.join();
}

TEST_F(HeldFilesTest, AJobIsDeletedThoughAFileInItsWorkDirectoryIsHeld) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring id = frontEnd.Enqueue(JobsFile("print hello\nexit 0")).at(0).id;
    frontEnd.AwaitStatus(id, JobStatus::Success);
    const HeldFile held(WorkDirOf(id) + L"\\scenario.log");
    EXPECT_EQ(frontEnd.Delete({id}), std::vector{id});
    EXPECT_TRUE(frontEnd.Jobs().empty());
    EXPECT_GE(CountInLog("of a job is not removed: "), 1) << Log();
}

TEST_F(HeldFilesTest, ALogThatIsHeldLosesMessagesAndNoJob) {
    WriteTextFile(logFile, "");
    HeldFile held(logFile);
    StartHost();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
    held.LetGo();
    Await("the log", [&] {
        ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
        return CountInLog("(Messages that could not be written here: ") == 1;
    });
}

} // namespace

#include "system/faults/FaultFixture.h"
#include "system/faults/posix/JumpingClock.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::int64_t day = 24 * 60 * 60;
constexpr std::int64_t year = 365 * day;

/// Hosts whose calendar clock the test changes while they run; the steady clock is unaffected.
class ClockJumpTest : public FaultFixture {
protected:
    ClockJumpTest() { TurnTo(0); }

    void SetUp() override {
#ifdef CONTROLLER_SANITIZED
        GTEST_SKIP() << "a sanitizer must be loaded first";
#endif
        setenv(jumpingClockVariable, ClockFile().c_str(), 1);
        setenv("LD_PRELOAD",
               Native(platform::ResolveAgainst(platform::ProgramDirectory(), L"jumping_clock.so")).c_str(), 1);
    }
    void TearDown() override {
        unsetenv("LD_PRELOAD");
        unsetenv(jumpingClockVariable);
    }

    /// Written in place, because the host maps the file.
    void TurnTo(std::int64_t seconds) const {
        const int file = open(ClockFile().c_str(), O_WRONLY | O_CREAT, 0600);
        EXPECT_EQ(write(file, &seconds, sizeof seconds), static_cast<ssize_t>(sizeof seconds));
        close(file);
    }

    std::string ClockFile() const {
        return Native(directory / L"clock");
    }
    static std::string Native(const std::wstring& path) {
        return text::ToUtf8(platform::ToNativeText(path));
    }

    void AllowAutomaticDeletion() const {
        std::string settings = UsualSettings("job_list.json");
        settings.insert(settings.size() - 1, R"(,"autoDeleteWorkFolder":{"enabled":true,"days":30})");
        WriteSettings(settings);
    }
};

TEST_F(ClockJumpTest, JobsRunToTheirEndsWhereverTheClockJumps) {
    StartHost();
    TestClient frontEnd(endpointName);
    for (const std::int64_t turned : {10 * year, -20 * year, -60 * year, 2000 * year, std::int64_t{0}}) {
        const std::wstring id = frontEnd.Enqueue(JobsFile("be ready\nwait for request")).at(0).id;
        Await("the scenario", [&] { return platform::Exists(WorkDirOf(id) + L"\\ready"); });
        TurnTo(turned);
        frontEnd.Cancel(id);
        EXPECT_EQ(frontEnd.AwaitStatus(id, JobStatus::Canceled).progress, 100);
        ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    }
    RestartHost();
    TestClient another(endpointName);
    EXPECT_EQ(another.Jobs().size(), 10U);
}

TEST_F(ClockJumpTest, AJobThatEndsBeforeItBeganIsKeptAndListed) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring id = frontEnd.Enqueue(JobsFile("be ready\nwait for request")).at(0).id;
    Await("the scenario", [&] { return platform::Exists(WorkDirOf(id) + L"\\ready"); });
    TurnTo(-2 * day);
    frontEnd.Cancel(id);
    const JobStatusInfo job = frontEnd.AwaitStatus(id, JobStatus::Canceled);
    EXPECT_LT(job.endTime, job.startTime);
    const test_support::Ending list = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"list"}));
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_NE(list.output.find("Canceled"), std::string::npos) << list.output;
}

TEST_F(ClockJumpTest, TheGraceTimeOfACancelledJobIsNoMatterOfTheCalendar) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::wstring id = frontEnd.Enqueue(JobsFile("ignore requests\nbe ready\nwait")).at(0).id;
    Await("the scenario", [&] { return platform::Exists(WorkDirOf(id) + L"\\ready"); });
    frontEnd.Cancel(id);
    frontEnd.AwaitStatus(id, JobStatus::Canceling);
    TurnTo(-10 * year);
    frontEnd.AwaitStatus(id, JobStatus::Canceled);
}

TEST_F(ClockJumpTest, AClockThatWasSetBackDeletesNoJobForItsAge) {
    AllowAutomaticDeletion();
    StartHost();
    {
        TestClient frontEnd(endpointName);
        ExpectJobs(frontEnd, "exit 0", 2, JobStatus::Success);
    }
    for (const std::int64_t turned : {-20 * year, -60 * year, 29 * day}) {
        TurnTo(turned);
        RestartHost();
        TestClient frontEnd(endpointName);
        EXPECT_EQ(frontEnd.Jobs().size(), 2U) << turned;
    }
    TurnTo(31 * day);
    RestartHost();
    TestClient frontEnd(endpointName);
    EXPECT_EQ(frontEnd.Jobs().size(), 0U);
}

} // namespace

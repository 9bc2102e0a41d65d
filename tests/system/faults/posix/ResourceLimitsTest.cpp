#include "kit/SystemHelpers.h"
#include "kit/processes/IdleFrontEnds.h"
#include "system/faults/FaultFixture.h"
#include "system/faults/posix/Privileges.h"

#include "kit/TestProcess.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "services/Settings.h"

#include <chrono>
#include <ctime>
#include <fstream>
#include <memory>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

namespace {

/// A host with this limit keeps its open files and gets no others.
constexpr rlim_t standardStreams = 3;
constexpr rlim_t usual = 1024;

class ResourceLimitsTest : public FaultFixture {
protected:
    pid_t HostNumber() const { return static_cast<pid_t>(platform::ProcessNumber(host.Get())); }

    /// Limits a resource of the host until the next call.
    void Limit(__rlimit_resource resource, rlim_t count) const {
        rlimit limit = {};
        ASSERT_EQ(prlimit(HostNumber(), resource, nullptr, &limit), 0);
        limit.rlim_cur = count;
        ASSERT_EQ(prlimit(HostNumber(), resource, &limit, nullptr), 0);
    }

    /// The processor time of the host so far.
    std::chrono::duration<double> ComputingTime() const {
        std::ifstream file("/proc/" + std::to_string(HostNumber()) + "/stat");
        std::string word;
        long user = 0;
        long system = 0;
        for (int field = 1; field <= 13; ++field) {
            file >> word;
        }
        file >> user >> system;
        return std::chrono::duration<double>(static_cast<double>(user + system) /
                                             static_cast<double>(sysconf(_SC_CLK_TCK)));
    }
};

/// Tests in which this process or a host cannot open files.
template <class Base>
class WithoutOpenFiles : public Base {
protected:
    void SetUp() override {
#ifdef CONTROLLER_CHECKS_TYPES
        GTEST_SKIP() << "the sanitizer opens pipes to look at objects, and takes them for broken ones when it cannot";
#endif
    }
};

using ResourceLimitsTest_OpenFiles = WithoutOpenFiles<ResourceLimitsTest>;

TEST_F(ResourceLimitsTest_OpenFiles, WithoutOpenFilesLeftJobsFailWithAReasonAndTheHostGoesOn) {
    StartHost();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    const std::wstring jobsFile = JobsFile("exit 0", 3);
    Limit(RLIMIT_NOFILE, standardStreams);
    for (const JobIdInfo& job : frontEnd.Enqueue(jobsFile)) {
        frontEnd.AwaitStatus(job.id, JobStatus::Failed);
    }
    EXPECT_GE(CountInLog("Too many open files"), 1) << Log();
    Limit(RLIMIT_NOFILE, usual);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    Await("the saved list", [this] { return SavedJobs().size() == 5; });
    EXPECT_TRUE(BesideList(L".corrupt-").empty());
}

TEST_F(ResourceLimitsTest_OpenFiles, WithoutOpenFilesLeftFrontEndsWaitAndTheHostDoesNotSpin) {
    StartHost();
    Limit(RLIMIT_NOFILE, standardStreams);
    const auto start = std::chrono::steady_clock::now();
    const auto computedBefore = ComputingTime();
    platform::OwnedHandle frontEnd;
    ASSERT_TRUE(platform::StartProcess(FrontEndProcess({L"cadjobs", L"list", L"-f"}), frontEnd));
    Await("two tries to take the front end", [this] { return CountInLog("Cannot take a front end") >= 2; });
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    EXPECT_LT((ComputingTime() - computedBefore).count(), passed.count() / 2);
    Limit(RLIMIT_NOFILE, usual);
    ASSERT_TRUE(test_support::WaitUntilSignalled(frontEnd.Get()));
    EXPECT_EQ(platform::ExitCode(frontEnd.Get()), 0);
}

TEST_F(ResourceLimitsTest_OpenFiles, AHostThatMayOpenNoMoreTellsFrontEndsSoAndCanBeEnded) {
    constexpr int few = 48;
    {
        const ScopedOpenFileLimit limit(few);
        StartHost();
    }
    std::vector<std::unique_ptr<IdleFrontEnds>> others;
    test_support::Ending refused;
    // A file that the host had open for a moment during the connections leaves space for one more.
    do {
        others.push_back(std::make_unique<IdleFrontEnds>(endpointName, few));
        refused = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"list"}, std::chrono::seconds(3)));
    } while (refused.exitCode == 0 && others.size() < 5);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_NE(refused.output.find("it is busy: the system gives it no more open files"), std::string::npos)
        << refused.output;
    EXPECT_LE(CountInLog("Front ends are turned away"), 2 * static_cast<int>(others.size())) << Log();
    EXPECT_GE(CountInLog("Front ends are turned away"), 1) << Log();
    const auto ended = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"host", L"stop"}, std::chrono::seconds(1)));
    EXPECT_EQ(ended.exitCode, 0) << ended.output;
    EXPECT_EQ(AwaitHostEnd(), 0);
}

/// A shell sets the limit: with one so low, this process could not start another.
platform::ProcessStart WithOpenFiles(rlim_t count, platform::ProcessStart start) {
    start.arguments.insert(start.arguments.begin(),
                           {L"-c", L"ulimit -n " + std::to_wstring(count) + LR"( && exec "$0" "$@")",
                            platform::ToNativeText(start.program)});
    start.program = L"\\bin\\sh";
    return start;
}

TEST_F(ResourceLimitsTest_OpenFiles, AHostThatMayOpenTooFewFilesSaysSoAndEnds) {
    bool isReady = false;
    // With fewer, the system cannot load the program.
    for (rlim_t count = 5; !isReady && count < usual; ++count) {
        const platform::Event ready;
        platform::OutputPipe output;
        ASSERT_TRUE(output.Open());
        platform::ProcessStart start =
            WithOpenFiles(count, Host({L"--ready-event", platform::InheritedHandleText(ready.Handle())}));
        start.inherited = {ready.Handle()};
        start.output = output.WriteEnd();
        ASSERT_TRUE(platform::StartProcess(start, host));
        output.CloseWriteEnd();
        isReady = platform::WaitForAny({ready.Handle(), host.Get()}, test_support::timeout) == std::size_t{0};
        if (!isReady) {
            const std::string said = test_support::ReadToEnd(output);
            EXPECT_EQ(AwaitHostEnd(), 1) << count;
            EXPECT_NE(said.find("Too many open files"), std::string::npos) << count << ": " << said;
        }
    }
    EXPECT_TRUE(isReady);
}

TEST_F(ResourceLimitsTest, ALimitOnTheSizeOfFilesIsLikeAFullDisk) {
    StartHost();
    TestClient frontEnd(endpointName);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    constexpr rlim_t smallerThanAnyList = 100;
    Limit(RLIMIT_FSIZE, smallerThanAnyList);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Failed);
    EXPECT_EQ(SavedJobs().size(), 1U);
    Limit(RLIMIT_FSIZE, RLIM_INFINITY);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
    Await("the saved list", [this] { return SavedJobs().size() == 3; });
}

using ResourceLimitsTest_Here = WithoutOpenFiles<testing::Test>;

TEST_F(ResourceLimitsTest_Here, AWaitForMoreHandlesThanAreAllowedDoesNotSpin) {
    const platform::Event first;
    const platform::Event second;
    const auto computing = std::clock();
    {
        const ScopedOpenFileLimit limit(1);
        constexpr std::chrono::milliseconds timeout{300};
        EXPECT_EQ(platform::WaitForAny({first.Handle(), second.Handle()}, timeout), std::nullopt);
    }
    EXPECT_LT(std::clock() - computing, CLOCKS_PER_SEC / 10);
}

TEST_F(ResourceLimitsTest_Here, SettingsThatCouldNotBeOpenedAreReadAsSoonAsTheyCan) {
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"settings.json";
    WriteTextFile(path, R"({"logFile":"","culture":"de-DE"})");
    settings::UseFile(path);
    ASSERT_EQ(settings::Current()->culture, L"de-DE");
    WriteTextFile(path, R"({"logFile":"","culture":"fr-FR"})");
    {
        const ScopedOpenFileLimit limit(0);
        EXPECT_EQ(settings::Current()->culture, L"de-DE");
    }
    EXPECT_EQ(settings::Current()->culture, L"fr-FR");
    settings::UseFile(L"");
}

/// The limit on processes applies to ordinary users only.
class ResourceLimitsTest_Processes : private OrdinaryUser, public ResourceLimitsTest {
protected:
    void SetUp() override {
        const std::string problem = OrdinaryUser::Problem(Host({}).program);
        if (!problem.empty()) {
            GTEST_SKIP() << problem;
        }
    }
};

TEST_F(ResourceLimitsTest_Processes, AJobWhoseRunnerCannotBeStartedHasFailedWithAReasonAndTheQueueGoesOn) {
    StartHost();
    TestClient frontEnd(endpointName);
    Limit(RLIMIT_NPROC, 1);
    const std::vector<JobIdInfo> jobs = frontEnd.Enqueue(JobsFile("exit 0", 2));
    for (const JobIdInfo& job : jobs) {
        frontEnd.AwaitStatus(job.id, JobStatus::Failed);
        const std::string result = ReadTextFile(WorkDirOf(job.id) + L"\\run_scenario_result.json");
        EXPECT_NE(result.find("cannot be started: Resource temporarily unavailable"), std::string::npos) << result;
    }
    EXPECT_GE(CountInLog("Resource temporarily unavailable"), 2);
    constexpr rlim_t many = 10000;
    Limit(RLIMIT_NPROC, many);
    ExpectJobs(frontEnd, "exit 0", 1, JobStatus::Success);
}

} // namespace

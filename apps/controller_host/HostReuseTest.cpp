#include <algorithm>

#include "formats/Provenance.h"
#include "formats/RunProtocol.h"
#include "kit/controller_host/AnswersFixture.h"
#include "platform/files/FileSystem.h"
#include "text/Text.h"

namespace {

/// A host without its loop: the test starts the jobs and ends their processes.
class HostReuseTest : public AnswersFixture {
protected:
    HostReuseTest() { UseSettings("false"); }

    void UseSettings(const std::string& reuse, const std::string& jobDefaults = "{}") const {
        WriteTextFile(directory / L"settings.json",
                      R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json","logFile":"",)"
                      R"("scenarioDirectories":[{"path":"scenarios"}],"reuse":)" +
                          reuse + R"(,"jobDefaults":)" + jobDefaults + "}");
        settings::UseFile(directory / L"settings.json");
    }

    /// Enqueues one job and starts it; returns its record.
    JobListInfo Run(std::optional<bool> reuse, const std::wstring& input = L"part.stl") {
        Scheduling scheduling;
        scheduling.reuse = reuse;
        return Run(scheduling, input);
    }

    ListedJob Run(const Scheduling& scheduling, const std::wstring& input = L"part.stl") {
        WriteTextFile(directory / input, "solid");
        const ScheduledRequest request(RequestFor(directory / L"scenarios\\mesh.rb", {directory / input}), scheduling);
        Ask(L"EnqueueJobs", messages::Serialize(events::enqueueJobs, request));
        const auto answer = Answered<JobEnqueueResult>(L"EnqueueJobsFinish");
        std::vector<JobStatusInfo> updated;
        EXPECT_TRUE(engine->ExecuteJob(nullptr, updated));
        return engine->Rows({{answer.jobIds.at(0).id}, 0, 0}).at(0);
    }

    void Succeed(const JobListInfo& job) {
        WriteTextFile(job.workDir + L"\\run_scenario_result.json", R"({"version":1,"jobId":"x","succeeded":true})");
        processes.back().Finish();
        std::vector<JobStatusInfo> changed;
        EXPECT_TRUE(engine->CheckUpdate(changed));
    }

    JobListInfo RunToSuccess(std::optional<bool> reuse) {
        const JobListInfo job = Run(reuse);
        Succeed(job);
        return engine->Listed({job.id}).at(0);
    }

    /// What the runner of a job is told beside its request.
    static provenance::RunContext ContextOf(const JobListInfo& job) {
        const std::wstring path = job.workDir + L"\\run_context.json";
        provenance::RunContext context;
        std::wstring problem;
        EXPECT_TRUE(!platform::Exists(path) || provenance::ReadContext(path, context, problem));
        return context;
    }

    /// The numbers of the jobs that are named to the runner of a job.
    static std::vector<std::int32_t> CandidatesOf(const JobListInfo& job) {
        std::vector<std::int32_t> numbers;
        for (const provenance::Candidate& candidate : ContextOf(job).candidates) {
            EXPECT_FALSE(candidate.outputDirectory.empty());
            numbers.push_back(candidate.jobNumber);
        }
        return numbers;
    }
};

using Numbers = std::vector<std::int32_t>;

} // namespace

TEST_F(HostReuseTest, TheRunnerIsToldWhichJobsHadTheSameRequest) {
    const JobListInfo first = RunToSuccess(std::nullopt);
    EXPECT_EQ(CandidatesOf(first), Numbers());
    const JobListInfo second = RunToSuccess(true);
    EXPECT_EQ(CandidatesOf(second), Numbers({first.seqId}));
    const JobListInfo other = Run(true, L"other.stl");
    EXPECT_EQ(CandidatesOf(other), Numbers());
    Succeed(other);
    EXPECT_EQ(CandidatesOf(RunToSuccess(true)), Numbers({second.seqId, first.seqId}));
    std::vector<std::wstring> ids = {second.id};
    std::vector<std::wstring> deleted;
    ASSERT_TRUE(engine->DeleteJobsDurably(ids, deleted));
    const Numbers left = CandidatesOf(RunToSuccess(true));
    EXPECT_EQ(std::count(left.begin(), left.end(), second.seqId), 0);
    EXPECT_EQ(left.back(), first.seqId);
}

TEST_F(HostReuseTest, TheSettingDecidesUnlessTheRequestDoes) {
    const JobListInfo first = RunToSuccess(std::nullopt);
    EXPECT_EQ(CandidatesOf(RunToSuccess(std::nullopt)), Numbers());
    UseSettings("true");
    EXPECT_EQ(CandidatesOf(RunToSuccess(false)), Numbers());
    EXPECT_EQ(CandidatesOf(RunToSuccess(std::nullopt)).back(), first.seqId);
}

TEST_F(HostReuseTest, AJobThatHasFailedIsNotNamed) {
    const JobListInfo first = Run(true);
    processes.back().Finish();
    std::vector<JobStatusInfo> changed;
    EXPECT_TRUE(engine->CheckUpdate(changed));
    EXPECT_EQ(CandidatesOf(Run(true)), Numbers());
}

TEST_F(HostReuseTest, TheRunnerOfALaterAttemptIsToldItsNumber) {
    Scheduling scheduling;
    scheduling.retries = 1;
    const JobListInfo job = Run(scheduling);
    processes.back().Finish();
    std::vector<JobStatusInfo> updated;
    ASSERT_TRUE(engine->CheckUpdate(updated));
    ASSERT_TRUE(engine->ExecuteJob(nullptr, updated));
    EXPECT_EQ(ContextOf(job).attempt, 2);
}

TEST_F(HostReuseTest, TheRunnerIsToldTheLimitsOfTheRequestAndOtherwiseOfTheSettings) {
    UseSettings("false", R"({"retries":3,"memoryLimitMiB":4000,"cpuLimitPercent":150})");
    Scheduling scheduling;
    scheduling.memoryLimitMiB = 0;
    const ListedJob job = Run(scheduling);
    EXPECT_EQ(job.retries, 3);
    EXPECT_EQ(ContextOf(job).memoryLimitMiB, 0);
    EXPECT_EQ(ContextOf(job).cpuLimitPercent, 150);
}

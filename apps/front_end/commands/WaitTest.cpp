#include "kit/front_end/CadjobsFixture.h"

namespace {

class WaitTest : public CadjobsFixture {};

TEST_F(WaitTest, EndsWithZeroWhenAllHaveSucceeded) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"wait", L"2,id1,2"}), 0);
    EXPECT_EQ(console.output,
              "Job  State    Progress  Time  Scenario     Input  Output folder, or what the scenario says\n"
              "  1  Success       0 %        Mesh report  a.stl\n"
              "  2  Success       0 %        Mesh report  b.stl\n"
              "\n"
              "Succeeded: 2, failed: 0, cancelled: 0\n");
}

TEST_F(WaitTest, EndsWithOneWhenAJobHasNotSucceeded) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Running)};
    Script({[this] { host.Report(Status(2, JobStatus::Canceled)); }});
    EXPECT_EQ(Run({L"wait", L"1,2"}), 1);
    EXPECT_NE(console.output.find("Succeeded: 1, failed: 0, cancelled: 1\n"), std::string::npos);
}

TEST_F(WaitTest, AJobThatIsDeletedMeanwhileHasNotSucceeded) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    Script({[this] { host.Report(Status(1, static_cast<JobStatus>(-1))); }});
    EXPECT_EQ(Run({L"wait", L"1"}), 1);
    EXPECT_NE(console.output.find("Succeeded: 0, failed: 1, cancelled: 0\n"), std::string::npos);
}

TEST_F(WaitTest, AJobThatIsDeletedAfterItHasSucceededHasSucceeded) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Running), Job(2, L"b.stl", JobStatus::Running)};
    Script({[this] {
                host.Report(Status(1, JobStatus::Success));
                host.Report(Status(1, static_cast<JobStatus>(-1)));
            },
            [this] { host.Report(Status(2, JobStatus::Success)); }, [] {}, [] {}, [] {}});
    EXPECT_EQ(Run({L"wait", L"1,2"}), 0);
    EXPECT_NE(console.output.find("Succeeded: 2, failed: 0, cancelled: 0\n"), std::string::npos) << console.output;
}

TEST_F(WaitTest, AJobThatIsDeletedRightAfterTheListWasFetchedIsShownAsDeleted) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Success)};
    host.onAnswered = [this](const std::wstring&) {
        host.jobs = {Job(2, L"b.stl", JobStatus::Success)};
        host.Report(Status(1, static_cast<JobStatus>(-1)));
    };
    EXPECT_EQ(Run({L"wait", L"1,2"}), 1);
    EXPECT_NE(console.output.find("  1  Deleted"), std::string::npos) << console.output;
    EXPECT_NE(console.output.find("Succeeded: 1, failed: 1, cancelled: 0\n"), std::string::npos) << console.output;
}

TEST_F(WaitTest, AnUnknownJobIsNamed) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"wait", L"1,7"}), 2);
    EXPECT_EQ(console.errors, "cadjobs: There is no job 7. See: cadjobs list\n");
    EXPECT_EQ(console.output, "");
}

TEST_F(WaitTest, TheOutcomeHasTheMessagesThatTheTableHasNoRoomFor) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Failed)};
    host.jobs[0].outputDir = L"/out/a";
    for (JobListInfo& job : host.jobs) {
        job.workDir = directory / job.id;
        WriteTextFile(job.workDir + L"\\run_scenario_result.json",
                      R"({"version":1,"jobId":"id","succeeded":true,"messages":[{"code":0,"text":"First."},)"
                      R"({"code":0,"text":"Its last lines:\none\ntwo\u001b[2J"}],"outputFiles":[]})");
    }
    EXPECT_EQ(Run({L"wait", L"1,2"}), 1);
    EXPECT_EQ(console.output.substr(console.output.find("\n\n") + 1), "\n"
                                                                      "Job 1: First.\n"
                                                                      "Job 1: Its last lines:\n"
                                                                      "  one\n"
                                                                      "  two [2J\n"
                                                                      "Job 2: Its last lines:\n"
                                                                      "  one\n"
                                                                      "  two [2J\n"
                                                                      "\n"
                                                                      "Succeeded: 1, failed: 1, cancelled: 0\n");
}

TEST_F(WaitTest, JsonIsTheOutcomeAlone) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"wait", L"1", L"--json"}), 0);
    EXPECT_EQ(console.output.find(R"({"version":1,"jobs":[{"number":1,)"), 0U);
}

} // namespace

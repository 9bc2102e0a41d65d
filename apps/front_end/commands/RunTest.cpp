#include "kit/front_end/CadjobsFixture.h"

#include "formats/Messages.h"

namespace {

class RunTest : public CadjobsFixture {
protected:
    RunTest() {
        WriteTextFile(directory / L"a.stl", "solid");
        WriteTextFile(directory / L"b.stl", "solid");
    }

    /// The host creates jobs with these ids and numbers; an empty id is a refused input.
    void AnswerWith(const std::vector<JobIdInfo>& jobs, const std::vector<std::vector<std::wstring>>& reasons = {}) {
        JobEnqueueResult result;
        result.jobIds = jobs;
        result.inputSetResults = reasons;
        host.answers[L"EnqueueJobs"] = {L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result)};
    }

    EnqueueJobsInfo SentRequest() {
        ScheduledRequest info;
        EXPECT_TRUE(messages::Deserialize(host.Requests().at(0).payload, info));
        return info;
    }

    const std::wstring a = directory / L"a.stl";
    const std::wstring b = directory / L"b.stl";
};

TEST_F(RunTest, EachInputIsAJobOfItsOwn) {
    AnswerWith({{L"id1", 1}, {L"id2", 2}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"run", L"mesh_report.rb", a, b, L"--output", directory / L"out", L"--argument", L"size=640"}), 0);
    const EnqueueJobsInfo request = SentRequest();
    EXPECT_EQ(request.scenario.id, L"mesh_report.rb");
    EXPECT_EQ(request.inputFileSets, (std::vector<std::vector<std::wstring>>{{a}, {b}}));
    EXPECT_EQ(request.outputDir, directory / L"out");
    EXPECT_EQ(request.runArgument, L"size=640");
    EXPECT_EQ(request.requestId.size(), 36U);
}

TEST_F(RunTest, CommasJoinTheFilesOfOneJob) {
    AnswerWith({{L"id1", 1}});
    Run({L"run", L"compare.rb", a + L"," + b});
    EXPECT_EQ(SentRequest().inputFileSets, (std::vector<std::vector<std::wstring>>{{a, b}}));
}

TEST_F(RunTest, ACommaInTheNameOfAFileIsPartOfIt) {
    const std::wstring named = directory / L"a.stl,b.stl";
    WriteTextFile(named, "solid");
    AnswerWith({{L"id1", 1}});
    Run({L"run", L"compare.rb", named});
    EXPECT_EQ(SentRequest().inputFileSets, (std::vector<std::vector<std::wstring>>{{named}}));
}

TEST_F(RunTest, ACommaInTheNameOfOneOfSeveralFilesIsPartOfIt) {
    const std::wstring named = directory / L"a.stl,1.stl";
    WriteTextFile(named, "solid");
    AnswerWith({{L"id1", 1}});
    Run({L"run", L"compare.rb", b + L"," + named + L",," + a + L"," + directory.Path() + L","});
    EXPECT_EQ(console.errors, "");
    EXPECT_EQ(SentRequest().inputFileSets, (std::vector<std::vector<std::wstring>>{{b, named, a, directory.Path()}}));
}

TEST_F(RunTest, InputsBehindTwoDashesMayBeginWithOne) {
    EXPECT_EQ(Run({L"run", L"r.rb", L"--", L"-odd.stl"}), 2);
    EXPECT_NE(console.errors.find("-odd.stl does not exist.\n"), std::string::npos) << console.errors;
}

TEST_F(RunTest, AScenarioFileIsMadeAbsolute) {
    WriteTextFile(directory / L"here.rb", "");
    AnswerWith({{L"id1", 1}});
    Run({L"run", directory / L"sub" + std::wstring(L"\\..\\here.rb"), a});
    EXPECT_EQ(SentRequest().scenario.id, directory / L"here.rb");
}

TEST_F(RunTest, ShowsProgressAndEndsWithTheOutcome) {
    AnswerWith({{L"id1", 1}, {L"id2", 2}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Queued),
                 Job(3, L"other.stl", JobStatus::Queued)};
    Script({[this] { host.Report(Status(1, JobStatus::Running, 50)); },
            [this] {
                host.Report(Status(3, JobStatus::Running));
                host.Report(Status(1, JobStatus::Success, 100));
            },
            [this] { host.Report(Status(2, JobStatus::Success, 100)); }});
    EXPECT_EQ(Run({L"run", L"r.rb", a, b}), 0);
    EXPECT_EQ(console.output,
              "Job 1 Queued, 0 %, Mesh report, a.stl\n"
              "Job 2 Queued, 0 %, Mesh report, b.stl\n"
              "Job 1 Running, 50 %, Mesh report, a.stl\n"
              "Job 1 Success, 100 %, Mesh report, a.stl\n"
              "Job 2 Success, 100 %, Mesh report, b.stl\n"
              "\n"
              "Job  State    Progress  Time  Scenario     Input  Output folder, or what the scenario says\n"
              "  1  Success     100 %        Mesh report  a.stl\n"
              "  2  Success     100 %        Mesh report  b.stl\n"
              "\n"
              "Succeeded: 2, failed: 0, cancelled: 0\n");
}

TEST_F(RunTest, OnATerminalTheOutcomeTakesTheProgressesPlace) {
    AnswerWith({{L"id1", 1}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    console.isTerminal = true;
    console.width = 200;
    Script({[this] { host.Report(Status(1, JobStatus::Success, 100)); }});
    EXPECT_EQ(Run({L"run", L"r.rb", a}), 0);
    const std::string outcome = "\x1b[3A\x1b[J"
                                "Job  State    Progress  Time  Scenario     Input  Output folder, or what the scenario "
                                "says\n  1  Success     100 %        Mesh report  a.stl\n"
                                "\nSucceeded: 1, failed: 0, cancelled: 0\n";
    ASSERT_GE(console.output.size(), outcome.size());
    EXPECT_EQ(console.output.substr(console.output.size() - outcome.size()), outcome);
}

TEST_F(RunTest, AFailedJobGivesOne) {
    AnswerWith({{L"id1", 1}, {L"id2", 2}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Failed)};
    EXPECT_EQ(Run({L"run", L"r.rb", a, b}), 1);
    EXPECT_NE(console.output.find("Succeeded: 1, failed: 1, cancelled: 0\n"), std::string::npos);
}

TEST_F(RunTest, ARefusedInputIsNamedAndTheOthersRun) {
    AnswerWith({{L"id1", 1}, {L"", 0}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"run", L"r.rb", a, b}), 1);
    EXPECT_EQ(console.errors,
              "cadjobs: The host has refused the input " + text::ToUtf8(b) + ": it does not say why.\n");
    EXPECT_NE(console.output.find("Succeeded: 1, failed: 0, cancelled: 0\n"), std::string::npos);
}

TEST_F(RunTest, ARefusedScenarioIsNamed) {
    AnswerWith({});
    EXPECT_EQ(Run({L"run", L"nothing.rb", a}), 1);
    EXPECT_EQ(console.errors, "cadjobs: The host has refused to run nothing.rb: it does not say why.\n");
    EXPECT_EQ(console.output, "");
}

TEST_F(RunTest, TheHostsReasonForARefusalIsToldAsItIs) {
    AnswerWith({{L"id1", 1}, {L"", 0}}, {{}, {L"The input b is no input."}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"run", L"r.rb", a, b}), 1);
    EXPECT_EQ(console.errors, "cadjobs: The input b is no input.\n");
}

TEST_F(RunTest, OneReasonForAllInputsIsToldOnceAndNoInputIsBlamed) {
    AnswerWith({{L"", 0}, {L"", 0}}, {{L"There is no scenario r.rb."}, {L"There is no scenario r.rb."}});
    EXPECT_EQ(Run({L"run", L"r.rb", a, b}), 1);
    EXPECT_EQ(console.errors, "cadjobs: There is no scenario r.rb.\n");
    EXPECT_EQ(console.output, "");
}

TEST_F(RunTest, AnInputThatIsNotThereIsToldBeforeAnythingIsSent) {
    EXPECT_EQ(Run({L"run", L"r.rb", directory / L"missing.stl"}), 2);
    EXPECT_TRUE(host.Requests().empty());
    EXPECT_NE(console.errors.find("missing.stl does not exist.\n"), std::string::npos);
}

TEST_F(RunTest, JsonIsTheOutcomeAlone) {
    AnswerWith({{L"id1", 1}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Canceled), Job(2, L"b.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"run", L"r.rb", a, L"--json"}), 1);
    EXPECT_EQ(console.output.find(R"({"version":1,"jobs":[{"number":1,"id":"id1","status":"Canceled",)"), 0U);
    EXPECT_EQ(console.output.find("\"number\":2"), std::string::npos);
    EXPECT_EQ(console.output.find('\n'), console.output.size() - 1);
}

TEST_F(RunTest, CtrlCLeavesTheJobsRunning) {
    AnswerWith({{L"id1", 1}});
    host.jobs = {Job(1, L"a.stl", JobStatus::Running)};
    Script({});
    EXPECT_EQ(Run({L"run", L"r.rb", a}), 130);
    EXPECT_EQ(console.errors, "cadjobs: The jobs go on without this program. See them with: cadjobs watch\n");
    EXPECT_EQ(host.Requests().size(), 2U);
}

} // namespace

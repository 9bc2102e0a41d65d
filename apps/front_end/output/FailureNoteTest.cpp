#include "kit/front_end/CadjobsFixture.h"

#include "formats/RunProtocol.h"

/// Failure reasons that are not in the work directory.
namespace {

class FailureNoteTest : public CadjobsFixture {
protected:
    FailureNoteTest() {
        UseSettings(R"({"version":1,"logFile":"","jobListFile":"job_list.json"})");
        JobListInfo job = Job(4, L"frame.stl", JobStatus::Failed);
        job.id = L"4f";
        job.workDir = directory / L"work4";
        host.jobs = {job};
        WriteTextFile(run_protocol::FailureNotePath(directory / L"job_list.json", L"4f"),
                      R"({"version":1,"succeeded":false,"messages":[{"code":1,"text":"The disk is full."}]})");
    }
};

TEST_F(FailureNoteTest, TheTableShowsTheNoteBesideTheJobList) {
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_NE(console.output.find("The disk is full."), std::string::npos) << console.output;
}

TEST_F(FailureNoteTest, JsonShowsItToo) {
    EXPECT_EQ(Run({L"list", L"--json"}), 0);
    EXPECT_NE(console.output.find(R"("message":"The disk is full.")"), std::string::npos) << console.output;
}

TEST_F(FailureNoteTest, TheScenariosOwnWordComesFirst) {
    WriteTextFile(directory / L"work4\\run_scenario_result.json",
                  R"({"version":1,"succeeded":false,"messages":[{"code":1,"text":"Not closed."}]})");
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_NE(console.output.find("Not closed."), std::string::npos) << console.output;
    EXPECT_EQ(console.output.find("The disk is full."), std::string::npos) << console.output;
}

} // namespace

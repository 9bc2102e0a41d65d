#include "formats/Provenance.h"
#include "formats/RunProtocol.h"
#include "kit/controller_web/ApiFixture.h"
#include "text/Text.h"

#include <gtest/gtest.h>

namespace {

class JobDetailTest : public ApiFixture {};

TEST_F(JobDetailTest, AJobHasWhatItsFilesTell) {
    ListedJob job = JobWithFiles(1, JobStatus::Failed);
    run_protocol::RunScenarioResult result;
    result.jobId = job.id;
    result.messages = {{1, L"The mesh has holes."}};
    result.outputFiles = {OutputDirectory(1) + L"\\report.txt"};
    ASSERT_TRUE(run_protocol::WriteFile(run_protocol::SerializeRunScenarioResult(result),
                                        WorkDirectory(1) + L"\\" + run_protocol::resultFileName));
    WriteTextFile(WorkDirectory(1) + L"\\" + run_protocol::progressFileName,
                  R"({"version":1,"jobId":"id1","progressInfoList":[{"progress":10,"message":"Reading"},)"
                  R"({"progress":35,"message":"Drawing"}]})");
    WriteTextFile(WorkDirectory(1) + L"\\" + run_protocol::logFileName, "Hello");
    host.jobs = {job};
    const Answer answer = Get("/api/v1/jobs/1");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_TRUE(answer.Has(R"("messages":["The mesh has holes."])")) << answer.body;
    EXPECT_TRUE(answer.Has(R"("progressReports":[{"progress":10,"message":"Reading"},{"progress":35,)"));
    EXPECT_TRUE(answer.Has(R"("hasLog":true)"));
    EXPECT_TRUE(answer.Has("report.txt"));
}

TEST_F(JobDetailTest, AJobHasItsProvenanceButNotThatOfAnother) {
    host.jobs = {JobWithFiles(1, JobStatus::Success), JobWithFiles(2, JobStatus::Success)};
    provenance::Record record;
    record.jobId = L"id1";
    record.runArgument = L"large";
    const std::string json = text::ToUtf8(provenance::Serialize(record));
    WriteTextFile(OutputDirectory(1) + L"\\provenance.json", json);
    WriteTextFile(OutputDirectory(2) + L"\\provenance.json", json);
    EXPECT_TRUE(Get("/api/v1/jobs/id1").Has(R"("provenance":{"version":1,"jobId":"id1")"));
    EXPECT_FALSE(Get("/api/v1/jobs/id2").Has("provenance\":"));
}

TEST_F(JobDetailTest, ATextWithHalfASurrogatePairIsItsCodePoints) {
    host.jobs = {JobWithFiles(1, JobStatus::Success)};
    provenance::Record record;
    record.jobId = L"id1";
    const std::wstring half(1, wchar_t{0xdc80});
    record.outputs = {{L"a" + half + L".stl", 4, L""}};
    record.toolVersions = {{L"tool" + half, L"1"}};
    WriteTextFile(OutputDirectory(1) + L"\\provenance.json", text::ToUtf8(provenance::Serialize(record)));
    const Answer answer = Get("/api/v1/jobs/1");
    EXPECT_TRUE(answer.Has(R"("outputs":[{"path":{"codePoints":[97,56448,46,115,116,108]},"size":4,)")) << answer.body;
    EXPECT_TRUE(answer.Has("\"tool\xef\xbf\xbd\":\"1\"")) << answer.body;
}

TEST_F(JobDetailTest, AJobWithoutFilesIsAnAnswer) {
    host.jobs = {Job(1, L"part.stl", JobStatus::Queued)};
    const Answer answer = Get("/api/v1/jobs/1");
    EXPECT_TRUE(answer.Has(R"("outputFolder":"","workFolder":"")"));
    EXPECT_TRUE(answer.Has(R"("progressReports":[],"hasLog":false}})")) << answer.body;
}

TEST_F(JobDetailTest, DamagedFilesAddNothing) {
    host.jobs = {JobWithFiles(1, JobStatus::Success)};
    WriteTextFile(WorkDirectory(1) + L"\\" + run_protocol::progressFileName, "{");
    WriteTextFile(WorkDirectory(1) + L"\\" + run_protocol::resultFileName, "\xff");
    WriteTextFile(OutputDirectory(1) + L"\\provenance.json", "[]");
    EXPECT_TRUE(Get("/api/v1/jobs/1").Has(R"("progressReports":[])"));
}

TEST_F(JobDetailTest, OnlyNamesOfOneJobAreJobs) {
    host.jobs = {JobWithFiles(1, JobStatus::Success)};
    for (const char* const name :
         {"2", "last", "failed", "1-1", "..", "%2e%2e", "id1%2f..", "a%5Cb", "%FF", "-1", ""}) {
        EXPECT_EQ(Get(std::string("/api/v1/jobs/") + name).status, 404U) << name;
    }
}

TEST_F(JobDetailTest, AJobIsKnownAfterItsHostHasEnded) {
    host.jobs = {JobWithFiles(1, JobStatus::Success)};
    OnHostThread([&] { host.diesAt = L"FetchJobsRequest"; });
    EXPECT_EQ(Get("/api/v1/jobs/1").status, 200U);
}

} // namespace

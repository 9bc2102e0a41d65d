#include "controller_web/api/queue/JobEndings.h"
#include "formats/RunProtocol.h"
#include "kit/controller_web/ApiFixture.h"
#include "text/Text.h"

#include <gtest/gtest.h>

namespace {

class JobEndingsTest : public ApiFixture {
protected:
    /// A job that said so and came to 40 %.
    ListedJob EndedJob(std::int32_t number, JobStatus status, const std::wstring& message) {
        ListedJob job = JobWithFiles(number, status);
        job.progress = 100;
        WriteResult(job, message);
        EXPECT_TRUE(run_protocol::WriteFile(run_protocol::SerializeProgress(job.id, 40, L"Slicing"),
                                            job.workDir + L"\\" + run_protocol::progressFileName));
        return job;
    }

    static std::wstring ResultPath(const ListedJob& job) { return job.workDir + L"\\" + run_protocol::resultFileName; }

    static void WriteResult(const ListedJob& job, const std::wstring& message) {
        EXPECT_TRUE(run_protocol::WriteFile(
            run_protocol::SerializeRunScenarioResult({job.id, false, {{1, message}, {1, L"more"}}, {}}),
            ResultPath(job)));
    }

    static front_end::JobRow RowOf(const ListedJob& job) {
        front_end::JobRow row;
        row.job = job;
        row.progress = job.progress;
        return row;
    }

    /// The row in the next answer.
    std::wstring Listed(const ListedJob& job) {
        std::wstring json;
        web::JobEndings::Answer(endings, shown).Append(RowOf(job), json);
        return json;
    }

    web::JobEndings endings;
    std::wstring unknown;
    const front_end::JobMembers shown =
        front_end::JobMembers::Named({L"number", L"progress", L"message"}, unknown).value();
};

TEST_F(JobEndingsTest, AFailedJobHasItsFirstMessageAndHowFarItCame) {
    EXPECT_EQ(Listed(EndedJob(1, JobStatus::Failed, L"The mesh has holes.")),
              LR"({"number":1,"progress":40,"message":"The mesh has holes."})");
}

TEST_F(JobEndingsTest, ACancelledJobHasThemToo) {
    EXPECT_EQ(Listed(EndedJob(1, JobStatus::Canceled, L"Cancelled.")),
              LR"({"number":1,"progress":40,"message":"Cancelled."})");
}

TEST_F(JobEndingsTest, AJobWithoutFilesHasNeitherMessageNorProgress) {
    ListedJob job = Job(1, L"part.stl", JobStatus::Failed);
    job.progress = 100;
    EXPECT_EQ(Listed(job), LR"({"number":1,"progress":0,"message":""})");
}

TEST_F(JobEndingsTest, OfAJobThatSucceededNothingIsRead) {
    EXPECT_EQ(Listed(EndedJob(1, JobStatus::Success, L"Sliced.")), LR"({"number":1,"progress":100,"message":""})");
}

TEST_F(JobEndingsTest, TheFilesOfAJobAreReadOnce) {
    const ListedJob job = EndedJob(1, JobStatus::Failed, L"first");
    const std::wstring first = Listed(job);
    WriteResult(job, L"second");
    EXPECT_EQ(Listed(job), first);
}

TEST_F(JobEndingsTest, AJobThatRanAgainIsReadAgain) {
    ListedJob job = EndedJob(1, JobStatus::Failed, L"first");
    Listed(job);
    WriteResult(job, L"second");
    job.endTime = L"2026-03-05T08:00:00Z";
    EXPECT_NE(Listed(job).find(L"second"), std::wstring::npos);
}

TEST_F(JobEndingsTest, AnAnswerWithoutTheseMembersReadsNothing) {
    const ListedJob job = EndedJob(1, JobStatus::Failed, L"first");
    std::wstring json;
    const auto numbers = front_end::JobMembers::Named({L"number"}, unknown).value();
    web::JobEndings::Answer(endings, numbers).Append(RowOf(job), json);
    EXPECT_EQ(json, LR"({"number":1})");
    WriteResult(job, L"second");
    EXPECT_NE(Listed(job).find(L"second"), std::wstring::npos);
}

TEST_F(JobEndingsTest, OneAnswerReadsTheFilesOfSoManyJobsAndTheNextOfTheOthers) {
    const ListedJob job = EndedJob(1, JobStatus::Failed, L"The mesh has holes.");
    const auto list = [&] {
        std::wstring last;
        web::JobEndings::Answer answer(endings, shown);
        for (std::size_t number = 0; number <= web::JobEndings::mostRead; ++number) {
            ListedJob other = job;
            other.id = L"id" + std::to_wstring(number);
            last.clear();
            answer.Append(RowOf(other), last);
        }
        return last;
    };
    EXPECT_EQ(list(), LR"({"number":1})");
    EXPECT_EQ(list(), LR"({"number":1,"progress":40,"message":"The mesh has holes."})");
}

TEST_F(JobEndingsTest, TheOldestOfTooManyIsForgotten) {
    const ListedJob first = EndedJob(1, JobStatus::Failed, L"first");
    Listed(first);
    WriteResult(first, L"second");
    for (std::size_t number = 0; number < web::JobEndings::mostKept; ++number) {
        Listed(Job(static_cast<std::int32_t>(number) + 2, L"part.stl", JobStatus::Failed));
    }
    EXPECT_NE(Listed(first).find(L"second"), std::wstring::npos);
}

TEST_F(JobEndingsTest, ALongMessageIsCut) {
    const std::wstring json = Listed(EndedJob(1, JobStatus::Failed, std::wstring(5000, L'x')));
    EXPECT_NE(json.find(std::wstring(web::JobEndings::longestMessage - 1, L'x') + L"\x2026\""), std::wstring::npos);
}

TEST_F(JobEndingsTest, ALongMessageIsNotCutInsideACharacter) {
    const std::wstring half = std::wstring(web::JobEndings::longestMessage - 2, L'x') + wchar_t(0xD83D);
    const std::wstring json = Listed(EndedJob(1, JobStatus::Failed, half + wchar_t(0xDE00) + L"yyy"));
    EXPECT_EQ(json.find(L"\\ud83d"), std::wstring::npos) << text::ToUtf8(json);
    EXPECT_NE(json.find(L"xx\x2026\""), std::wstring::npos) << text::ToUtf8(json);
}

TEST_F(JobEndingsTest, ListsAndEventsHaveTheMessage) {
    host.jobs = {EndedJob(1, JobStatus::Failed, L"The mesh has holes."),
                 EndedJob(2, JobStatus::Running, L"The part is too thin.")};
    EXPECT_TRUE(Get("/api/v1/jobs").Has(R"("status":"Failed","progress":40,"message":"The mesh has holes.")"));
    const auto feed = Follow("/api/v1/events");
    Await(*feed, "event: reset");
    OnHostThread([&] {
        JobStatusInfo report = Status(2, JobStatus::Failed, 100);
        report.workDir = host.jobs[1].workDir;
        host.Report(report);
    });
    Await(*feed, R"("status":"Failed","progress":40,"message":"The part is too thin.")");
}

} // namespace

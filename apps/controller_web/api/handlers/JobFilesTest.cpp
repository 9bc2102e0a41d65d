#include "formats/RunFileNames.h"
#include "kit/controller_web/ApiFixture.h"

#include <gtest/gtest.h>

namespace {

class JobFilesTest : public ApiFixture {
protected:
    JobFilesTest() {
        host.jobs = {JobWithFiles(1, JobStatus::Success), JobWithFiles(2, JobStatus::Running),
                     Job(3, L"c.stl", JobStatus::Queued)};
        WriteTextFile(OutputDirectory(1) + L"\\report.txt", "0123456789");
        WriteTextFile(OutputDirectory(1) + L"\\views\\top view.svg", "<svg/>");
        WriteTextFile(directory / L"secret.txt", "secret");
    }

    std::wstring LogOf(std::int32_t number) const { return WorkDirectory(number) + L"\\" + run_protocol::logFileName; }
};

TEST_F(JobFilesTest, TheFilesOfAJobAreListed) {
    const Answer answer = Get("/api/v1/jobs/1/files");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_TRUE(answer.Has(R"({"version":1,"complete":true,"files":[{"path":"report.txt","size":10,"modified":"2)"))
        << answer.body;
    EXPECT_TRUE(answer.Has(R"("path":"views/top view.svg","size":6)")) << answer.body;
}

TEST_F(JobFilesTest, AFileIsSentWithItsType) {
    const Answer answer = Get("/api/v1/jobs/1/files/report.txt");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_EQ(answer.body, "0123456789");
    EXPECT_EQ(answer.headers.at("Content-Type"), "text/plain; charset=utf-8");
    EXPECT_EQ(answer.headers.at("X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(answer.headers.count("Content-Security-Policy"), 0U);
}

TEST_F(JobFilesTest, ActiveContentIsInASandbox) {
    const Answer answer = Get("/api/v1/jobs/1/files/views/top%20view.svg");
    EXPECT_EQ(answer.body, "<svg/>");
    EXPECT_TRUE(answer.headers.at("Content-Security-Policy").starts_with("sandbox;"));
}

TEST_F(JobFilesTest, ARangeIsAPart) {
    const Answer part = GetRange("/api/v1/jobs/1/files/report.txt", "bytes=2-4");
    EXPECT_EQ(part.status, 206U);
    EXPECT_EQ(part.body, "234");
    EXPECT_EQ(part.headers.at("Content-Range"), "bytes 2-4/10");
    EXPECT_EQ(GetRange("/api/v1/jobs/1/files/report.txt", "bytes=-3").body, "789");
    EXPECT_EQ(GetRange("/api/v1/jobs/1/files/report.txt", "bytes=10-").status, 416U);
}

TEST_F(JobFilesTest, NothingOutsideOfTheDirectoryIsReached) {
    for (const char* const name : {"../secret.txt", "..%2Fsecret.txt", "..%5Csecret.txt", "views/../../secret.txt",
                                   "%2e%2e/secret.txt", ".", "", "/report.txt", "views", "report.txt/", "./report.txt",
                                   "views/..", "report.txt%00", "C%3A", "views%2Ftop%20view.svg"}) {
        EXPECT_EQ(Get(std::string("/api/v1/jobs/1/files/") + name).status, 404U) << name;
    }
}

TEST_F(JobFilesTest, AJobWithoutADirectoryHasNoFiles) {
    EXPECT_EQ(Get("/api/v1/jobs/3/files").status, 404U);
    EXPECT_EQ(Get("/api/v1/jobs/3/files.zip").status, 404U);
    EXPECT_EQ(Get("/api/v1/jobs/9/files/report.txt").status, 404U);
}

TEST_F(JobFilesTest, AnArchiveHasAllFiles) {
    const Answer answer = Get("/api/v1/jobs/1/files.zip");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_FALSE(answer.isBroken);
    EXPECT_EQ(answer.headers.at("Content-Disposition"), "attachment; filename=\"job-1.zip\"");
    EXPECT_TRUE(answer.body.starts_with("PK"));
    EXPECT_TRUE(answer.Has("views/top view.svg"));
}

TEST_F(JobFilesTest, ALogIsSent) {
    WriteTextFile(LogOf(1), "one\ntwo\n");
    const Answer answer = Get("/api/v1/jobs/1/log");
    EXPECT_EQ(answer.body, "one\ntwo\n");
    EXPECT_EQ(answer.headers.at("Content-Type"), "text/plain; charset=utf-8");
    EXPECT_EQ(GetRange("/api/v1/jobs/1/log", "bytes=4-").body, "two\n");
    EXPECT_EQ(Get("/api/v1/jobs/1/log?follow=1").body, "one\ntwo\n");
    EXPECT_EQ(Get("/api/v1/jobs/2/log").status, 404U);
    EXPECT_EQ(Get("/api/v1/jobs/3/log").status, 404U);
    EXPECT_EQ(Get("/api/v1/jobs/1/log?follow=yes").status, 400U);
}

TEST_F(JobFilesTest, TheLogOfAnEarlierAttemptIsSent) {
    host.jobs[0].attempt = 3;
    WriteTextFile(LogOf(1), "third");
    WriteTextFile(WorkDirectory(1) + L"\\scenario.1.log", "the first attempt");
    EXPECT_EQ(Get("/api/v1/jobs/1/log?attempt=1").body, "the first attempt");
    EXPECT_EQ(GetRange("/api/v1/jobs/1/log?attempt=1", "bytes=-7").body, "attempt");
    EXPECT_EQ(Get("/api/v1/jobs/1/log?attempt=2").status, 404U);
    EXPECT_EQ(Get("/api/v1/jobs/3/log?attempt=1").status, 404U);
    EXPECT_TRUE(Get("/api/v1/jobs/1").Has(R"("hasLog":true,"attemptLogs":[1])"));
    EXPECT_FALSE(Get("/api/v1/jobs/2").Has("attemptLogs"));
}

TEST_F(JobFilesTest, AnAttemptIsANumber) {
    for (const char* const attempt : {"0", "-1", "01", "1x", "..%2Fscenario", "99999999999", "1&follow=1"}) {
        EXPECT_EQ(Get(std::string("/api/v1/jobs/1/log?attempt=") + attempt).status, 400U) << attempt;
    }
}

TEST_F(JobFilesTest, AFollowedLogGrowsAndEndsWithItsJob) {
    EXPECT_EQ(Get("/api/v1/jobs").status, 200U);
    const auto feed = Follow("/api/v1/jobs/2/log?follow=1");
    EXPECT_EQ(feed->Next(), nullptr);
    WriteTextFile(LogOf(2), "one\n");
    EXPECT_EQ(Await(*feed, "one"), "one\n");
    EXPECT_FALSE(feed->IsAtEnd());
    WriteTextFile(LogOf(2), "one\ntwo\n");
    EXPECT_EQ(Await(*feed, "two"), "two\n");
    const auto events = Follow("/api/v1/events");
    Await(*events, "event: reset");
    OnHostThread([&] { host.Report(Status(2, JobStatus::Success, 100)); });
    Await(*events, "\"status\":\"Success\"");
    EXPECT_EQ(feed->Next(), nullptr);
    EXPECT_TRUE(feed->IsAtEnd());
}

TEST_F(JobFilesTest, OneFollowedLogTooManyIsRefused) {
    EXPECT_EQ(Get("/api/v1/jobs").status, 200U);
    std::vector<std::unique_ptr<web::EventFeed>> feeds;
    for (int i = 0; i < 32; ++i) {
        feeds.push_back(Follow("/api/v1/jobs/2/log?follow=1"));
    }
    EXPECT_EQ(Get("/api/v1/jobs/2/log?follow=1").status, 429U);
    feeds.clear();
    EXPECT_NE(Follow("/api/v1/jobs/2/log?follow=1"), nullptr);
}

} // namespace

#include "formats/JobStates.h"
#include "formats/Messages.h"
#include "formats/RunFileNames.h"
#include "kit/controller_web/ApiFixture.h"

#include <thread>

#include <gtest/gtest.h>

namespace {

class LiveUpdatesTest : public ApiFixture {
protected:
    LiveUpdatesTest() { host.jobs = {Job(1, L"a.stl", JobStatus::Running), Job(2, L"b.stl", JobStatus::Queued)}; }

    /// A stream that has been told to fetch everything.
    std::unique_ptr<web::EventFeed> OpenStream() {
        EXPECT_EQ(Get("/api/v1/jobs").status, 200U);
        auto feed = Follow("/api/v1/events");
        Await(*feed, "event: reset");
        return feed;
    }

    /// The data of an event; it is as described.
    std::string DataOf(const std::string& text, const std::string& schema) {
        const std::size_t begin = text.find("data: ") + 6;
        std::string data = text.substr(begin, text.find('\n', begin) - begin);
        EXPECT_EQ(schemas.ProblemOf(schema, data), "");
        return data;
    }
};

TEST_F(LiveUpdatesTest, AChangeIsSentAndListed) {
    const auto feed = OpenStream();
    OnHostThread([&] { host.Report(Status(1, JobStatus::Running, 40)); });
    const std::string data = DataOf(Await(*feed, "event: jobs"), "JobsEvent");
    EXPECT_NE(data.find(R"("changed":[{"number":1,"id":"id1","status":"Running","progress":40)"), std::string::npos)
        << data;
    EXPECT_NE(data.find(R"("counts":{"queued":1,"running":1,)"), std::string::npos);
    EXPECT_TRUE(Get("/api/v1/jobs?status=Running").Has("\"progress\":40"));
}

TEST_F(LiveUpdatesTest, TheMessageOfARunningJobIsSent) {
    host.jobs[0] = JobWithFiles(1, JobStatus::Running);
    const auto feed = OpenStream();
    OnHostThread([&] {
        WriteTextFile(WorkDirectory(1) + L"\\" + run_protocol::progressFileName,
                      R"({"jobId":"id1","progressInfoList":[{"progress":50,"message":"Layer 5 of 10"}]})");
        JobStatusInfo info = Status(1, JobStatus::Running, 50);
        info.workDir = WorkDirectory(1);
        host.Report(info);
    });
    Await(*feed, "\"message\":\"Layer 5 of 10\"");
}

TEST_F(LiveUpdatesTest, ANewJobIsSentWithAllItsData) {
    const auto feed = OpenStream();
    OnHostThread([&] {
        host.jobs.push_back(Job(3, L"new.stl", JobStatus::Queued));
        host.Report(Status(3, JobStatus::Queued));
    });
    EXPECT_NE(Await(*feed, "\"id\":\"id3\"").find("new.stl"), std::string::npos);
    EXPECT_TRUE(Get("/api/v1/jobs").Has("\"total\":3"));
}

TEST_F(LiveUpdatesTest, ADeletedJobIsSentAsRemoved) {
    const auto feed = OpenStream();
    OnHostThread([&] {
        host.jobs.pop_back();
        host.Report(Status(2, unlistedStatus));
    });
    const std::string data = DataOf(Await(*feed, "event: jobs"), "JobsEvent");
    EXPECT_NE(data.find(R"("changed":[],"removed":["id2"])"), std::string::npos) << data;
    EXPECT_EQ(Get("/api/v1/jobs/2").status, 404U);
}

TEST_F(LiveUpdatesTest, ManyChangesAreOneEvent) {
    for (std::int32_t number = 3; number <= 1000; ++number) {
        host.jobs.push_back(Job(number, L"x.stl", JobStatus::Running));
    }
    const auto feed = OpenStream();
    OnHostThread([&] {
        for (std::int32_t number = 3; number <= 1000; ++number) {
            host.Report(Status(number, JobStatus::Running, 1));
            host.Report(Status(number, JobStatus::Running, 2));
        }
    });
    const std::string text = Await(*feed, "event: jobs");
    EXPECT_NE(text.find("\"id\":\"id3\""), std::string::npos);
    EXPECT_NE(text.find("\"id\":\"id1000\""), std::string::npos);
    EXPECT_EQ(text.find("\"progress\":1,"), std::string::npos);
}

TEST_F(LiveUpdatesTest, TooManyChangesMeanAReset) {
    for (std::int32_t number = 3; number <= 2500; ++number) {
        host.jobs.push_back(Job(number, L"x.stl", JobStatus::Running));
    }
    const auto feed = OpenStream();
    OnHostThread([&] {
        for (std::int32_t number = 3; number <= 2500; ++number) {
            host.Report(Status(number, JobStatus::Success, 100));
        }
    });
    Await(*feed, "event: reset");
    EXPECT_TRUE(Get("/api/v1/jobs?status=Success").Has("\"total\":2498"));
}

TEST_F(LiveUpdatesTest, AnEndedJobChangesWhyOthersWait) {
    host.jobs[1].waitReason = L"resource";
    host.jobs[1].waitName = L"gpu";
    const auto feed = OpenStream();
    OnHostThread([&] {
        host.jobs[1].waitReason.clear();
        host.jobs[1].waitName.clear();
        host.Report(Status(1, JobStatus::Success, 100));
    });
    const std::string data = DataOf(Await(*feed, "event: jobs"), "JobsEvent");
    EXPECT_NE(data.find("\"id\":\"id2\""), std::string::npos) << data;
    EXPECT_FALSE(Get("/api/v1/jobs?status=Queued").Has("waitReason"));
    EXPECT_TRUE(Get("/metrics").Has("controller_jobs_ended_total{status=\"Success\"} 1\n"));
}

TEST_F(LiveUpdatesTest, TheEndAndTheStartOfAHostAreSent) {
    const auto feed = OpenStream();
    OnHostThread([&] {
        host.runs = false;
        host.transmitter.isEngineThere = false;
    });
    DataOf(Await(*feed, "event: host\ndata: {\"running\":false}"), "HostEvent");
    EXPECT_TRUE(Get("/api/v1/queue").Has("\"running\":false"));
    EXPECT_TRUE(Get("/api/v1/jobs").Has("\"total\":2"));
    EXPECT_EQ(Post("/api/v1/jobs/cancel", R"({"ids":["1"]})").status, 503U);
    EXPECT_EQ(Post("/api/v1/jobs", R"({"EnqueueJobs":[]})").status, 201U);
    Await(*feed, "event: host\ndata: {\"running\":true}");
    EXPECT_TRUE(Get("/api/v1/queue").Has("\"running\":true"));
}

TEST_F(LiveUpdatesTest, AClientContinuesAfterAnInterruption) {
    auto feed = OpenStream();
    OnHostThread([&] { host.Report(Status(1, JobStatus::Running, 10)); });
    const std::string text = Await(*feed, "event: jobs");
    const std::string id = text.substr(4, text.find('\n') - 4);
    feed.reset();
    OnHostThread([&] { host.Report(Status(1, JobStatus::Running, 20)); });
    feed = Follow("/api/v1/events", id);
    EXPECT_NE(Await(*feed, "event: ").find("\"progress\":20"), std::string::npos);
}

TEST_F(LiveUpdatesTest, TwoClientsAtOnceSeeOneList) {
    EXPECT_EQ(Get("/api/v1/jobs").status, 200U);
    const auto work = [this] {
        for (int i = 0; i < 100; ++i) {
            EXPECT_EQ(Handle(RequestOf(web::Method::Get, "/api/v1/jobs")).status, 200U);
            EXPECT_EQ(Handle(RequestOf(web::Method::Get, "/api/v1/jobs/1")).status, 200U);
            EXPECT_EQ(Handle(RequestOf(web::Method::Get, "/api/v1/queue")).status, 200U);
        }
    };
    std::thread one(work);
    std::thread other(work);
    one.join();
    other.join();
}

} // namespace

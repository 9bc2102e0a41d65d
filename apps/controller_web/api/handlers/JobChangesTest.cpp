#include "formats/JobStates.h"
#include "formats/Messages.h"
#include "kit/controller_web/ApiFixture.h"

#include <gtest/gtest.h>

namespace {

class JobChangesTest : public ApiFixture {
protected:
    JobChangesTest() { host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Success)}; }

    void AnswerEnqueue(const JobEnqueueResult& result) {
        host.answers[L"EnqueueJobs"] = {L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result)};
    }

    static std::string JobsFile() {
        return R"({"EnqueueJobs":[{"scenario":{"id":"mesh"},"inputFileSets":[["/in/a.stl"],["/in/b.stl"]],)"
               R"("outputDir":"/out","priority":3}]})";
    }
};

TEST_F(JobChangesTest, JobsAreCreatedFromAJobsFile) {
    AnswerEnqueue({{{L"5", 5}, {}}, L"", {{}, {L"The file is missing."}}});
    const Answer answer = Post("/api/v1/jobs", JobsFile());
    EXPECT_EQ(answer.status, 201U);
    EXPECT_EQ(answer.body, R"({"version":1,"jobs":[{"id":"5","number":5}],)"
                           R"("refused":[{"request":0,"inputSet":1,"message":"The file is missing."}]})");
}

TEST_F(JobChangesTest, RelativePathsDoNotDependOnTheCurrentDirectory) {
    AnswerEnqueue({{{L"5", 5}}, L"", {{}}});
    Post("/api/v1/jobs",
         R"({"EnqueueJobs":[{"scenario":{"id":"mesh"},"inputFileSets":[["a.stl"]],"outputDir":"out"}]})");
    OnHostThread([&] {
        ScheduledRequest request;
        for (const auto& sent : host.Requests()) {
            if (sent.name == L"EnqueueJobs") {
                EXPECT_TRUE(messages::Deserialize(sent.payload, request));
            }
        }
        EXPECT_EQ(request.outputDir, directory / L"out");
        EXPECT_EQ(request.inputFileSets.front().front(), directory / L"a.stl");
    });
}

TEST_F(JobChangesTest, ARefusalSaysWhy) {
    AnswerEnqueue({{}, L"", {{L"There is no scenario mesh."}}});
    const Answer answer = Post("/api/v1/jobs", JobsFile());
    EXPECT_EQ(answer.status, 422U);
    EXPECT_TRUE(answer.Has(R"("refused":[{"request":0,"message":"There is no scenario mesh."}])")) << answer.body;
}

TEST_F(JobChangesTest, CreationStartsAHost) {
    host.runs = false;
    AnswerEnqueue({{{L"5", 5}, {L"6", 6}}, L"", {{}, {}}});
    EXPECT_EQ(Get("/api/v1/jobs").status, 503U);
    EXPECT_EQ(Post("/api/v1/jobs", JobsFile()).status, 201U);
    EXPECT_EQ(Get("/api/v1/jobs").status, 200U);
    OnHostThread([&] { EXPECT_EQ(host.startCount, 1); });
}

TEST_F(JobChangesTest, AHostThatCannotBeStartedIsTold) {
    host.runs = false;
    host.startProblem = L"There is no controller_host.";
    const Answer answer = Post("/api/v1/jobs", JobsFile());
    EXPECT_EQ(answer.status, 503U);
    EXPECT_TRUE(answer.Has("There is no controller_host."));
}

TEST_F(JobChangesTest, AWrongJobsFileIsToldWithItsPlace) {
    const Answer answer = Post("/api/v1/jobs", "{\"EnqueueJobs\":[{\"scenario\":7}]}");
    EXPECT_EQ(answer.status, 400U);
    EXPECT_TRUE(answer.Has("line 1, column ")) << answer.body;
    EXPECT_EQ(Post("/api/v1/jobs", "").status, 400U);
    EXPECT_EQ(Post("/api/v1/jobs", std::string(100'000, '[')).status, 400U);
}

TEST_F(JobChangesTest, ACancelledJobIsListedSoAtOnce) {
    host.answers[L"CancelJobs"] = {
        L"CancelJobsFinish", messages::Serialize(L"CancelJobsFinish", std::vector{Status(1, JobStatus::Dequeued)})};
    host.onAnswered = [&](const std::wstring& name) {
        if (name == L"CancelJobs") {
            host.jobs[0].status = JobStatus::Dequeued;
        }
    };
    const Answer answer = Post("/api/v1/jobs/cancel", R"({"ids":["1"]})");
    EXPECT_TRUE(answer.Has(R"("jobs":[{"number":1,"id":"id1","status":"Dequeued","done":true)")) << answer.body;
    EXPECT_TRUE(Get("/api/v1/jobs?status=Dequeued").Has("\"total\":1"));
}

TEST_F(JobChangesTest, ADeletedJobIsGone) {
    host.answers[L"DeleteJobsRequest"] = {
        L"DeleteJobsResponse", messages::Serialize(events::deleteJobsResponse, std::vector<std::wstring>{L"id2"})};
    host.onAnswered = [&](const std::wstring& name) {
        if (name == L"DeleteJobsRequest") {
            host.jobs.pop_back();
        }
    };
    EXPECT_TRUE(Get("/api/v1/jobs").Has("\"total\":2"));
    const Answer answer = Delete("/api/v1/jobs/2");
    EXPECT_TRUE(answer.Has(R"("status":"Deleted","done":true)")) << answer.body;
    EXPECT_TRUE(Get("/api/v1/jobs").Has("\"total\":1"));
    EXPECT_EQ(Delete("/api/v1/jobs/2").status, 404U);
}

TEST_F(JobChangesTest, AJobThatRunsIsNotDeleted) {
    host.jobs[0].status = JobStatus::Running;
    host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse",
                                          messages::Serialize(events::deleteJobsResponse, std::vector<std::wstring>())};
    EXPECT_EQ(Delete("/api/v1/jobs/1").status, 409U);
    EXPECT_TRUE(Post("/api/v1/jobs/delete", R"({"ids":["1"]})").Has(R"("done":false)"));
}

TEST_F(JobChangesTest, AnEndedJobIsRunAgain) {
    AnswerEnqueue({{{L"id9", 9}}, L"", {{}}});
    const Answer answer = Post("/api/v1/jobs/again", R"({"ids":["id2"]})");
    EXPECT_TRUE(answer.Has(R"({"number":9,"id":"id9","status":"Queued","done":true)")) << answer.body;
    EXPECT_TRUE(Post("/api/v1/jobs/again", R"({"ids":["1"]})").Has(R"("done":false)"));
}

TEST_F(JobChangesTest, AWaitingJobIsChanged) {
    host.answers[L"EditJobsRequest"] = {events::editJobsFinish.name,
                                        messages::Serialize(events::editJobsFinish, {Status(1, JobStatus::Queued)})};
    const Answer answer = Post("/api/v1/jobs/edit", R"({"ids":["1","2"],"hold":true,"priority":-3})");
    EXPECT_TRUE(answer.Has(R"("id":"id1","status":"Queued","done":true)")) << answer.body;
    EXPECT_TRUE(answer.Has(R"("id":"id2","status":"Success","done":false)")) << answer.body;
    OnHostThread([&] {
        JobsEdit edit;
        for (const auto& request : host.Requests()) {
            if (request.name == L"EditJobsRequest") {
                EXPECT_TRUE(messages::Deserialize(request.payload, edit));
            }
        }
        EXPECT_EQ(edit.hold, std::optional(true));
        EXPECT_EQ(edit.priority, std::optional<std::int32_t>(-3));
        EXPECT_EQ(edit.jobs, (std::vector<std::wstring>{L"id1", L"id2"}));
    });
}

TEST_F(JobChangesTest, AnUnknownJobIsNamed) {
    const Answer answer = Post("/api/v1/jobs/cancel", R"({"ids":["1","77"]})");
    EXPECT_EQ(answer.status, 404U);
    EXPECT_TRUE(answer.Has("77"));
    OnHostThread([&] {
        for (const auto& request : host.Requests()) {
            EXPECT_NE(request.name, L"CancelJobs");
        }
    });
}

TEST_F(JobChangesTest, AWrongBodyChangesNothing) {
    for (const char* const body : {"", "{}", "[]", "null", R"({"ids":[]})", R"({"ids":"1"})", R"({"ids":["failed*"]})",
                                   R"({"ids":["1"],"all":true})"}) {
        for (const char* const action : {"cancel", "delete", "again", "edit"}) {
            EXPECT_EQ(Post(std::string("/api/v1/jobs/") + action, body).status, 400U) << action << body;
        }
    }
}

TEST_F(JobChangesTest, TheQueueIsPaused) {
    host.answers[L"SetQueueStateRequest"] = {L"QueueStateResponse",
                                             messages::Serialize(events::queueStateResponse, {true})};
    EXPECT_TRUE(Put("/api/v1/queue", R"({"paused":true})").Has("\"paused\":true"));
    EXPECT_TRUE(Get("/api/v1/queue").Has("\"paused\":true"));
    EXPECT_EQ(Put("/api/v1/queue", R"({"paused":"yes"})").status, 400U);
}

TEST_F(JobChangesTest, AHostThatEndsMeanwhileIsTold) {
    OnHostThread([&] { host.diesAt = L"CancelJobs"; });
    EXPECT_EQ(Post("/api/v1/jobs/cancel", R"({"ids":["1"]})").status, 503U);
}

TEST_F(JobChangesTest, AHostThatDoesNotAnswerIsTold) {
    timeout = std::chrono::seconds(0);
    context.timeout = timeout;
    EXPECT_EQ(Post("/api/v1/jobs/cancel", R"({"ids":["1"]})").status, 504U);
}

} // namespace

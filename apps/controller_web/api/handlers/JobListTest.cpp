#include "kit/controller_web/ApiFixture.h"

#include <gtest/gtest.h>

namespace {

class JobListTest : public ApiFixture {
protected:
    void AddJobs() {
        host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Failed),
                     Job(3, L"c.stl", JobStatus::Running), Job(4, L"d.stl", JobStatus::Queued)};
        host.jobs[1].scenario.displayName = L"Reports : Slow";
        host.jobs[1].scenario.id = L"77";
        host.jobs[3].priority = 5;
        host.jobs[0].endTime = L"2026-03-05T07:08:09Z";
        host.jobs[1].endTime = L"2026-03-05T07:08:08Z";
    }

    /// The numbers of the jobs in an answer, with commas.
    std::string NumbersIn(const std::string& target) {
        const std::string body = Get(target).body;
        std::string numbers;
        for (std::size_t place = body.find("\"number\":"); place != std::string::npos;
             place = body.find("\"number\":", place + 1)) {
            const std::size_t begin = place + 9;
            numbers += (numbers.empty() ? "" : ",") + body.substr(begin, body.find_first_of(",}", begin) - begin);
        }
        return numbers;
    }
};

TEST_F(JobListTest, AnEmptyListIsAnAnswer) {
    const Answer answer = Get("/api/v1/jobs");
    EXPECT_EQ(answer.status, 200U);
    EXPECT_TRUE(answer.Has("\"total\":0,\"counts\":{\"queued\":0,"));
    EXPECT_TRUE(answer.Has("\"jobs\":[]}"));
}

TEST_F(JobListTest, AJobHasTheNamesOfTheCommandLine) {
    AddJobs();
    const Answer answer = Get("/api/v1/jobs?status=Failed");
    EXPECT_TRUE(answer.Has(R"("jobs":[{"number":2,"id":"id2","status":"Failed")")) << answer.body;
    EXPECT_TRUE(answer.Has(R"("scenarioId":"77","label":"Reports"}])")) << answer.body;
    EXPECT_FALSE(answer.Has("outputFolder"));
}

TEST_F(JobListTest, JobsAreSelected) {
    AddJobs();
    EXPECT_EQ(NumbersIn("/api/v1/jobs"), "1,2,3,4");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?status=Failed&status=queued"), "2,4");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?label=reports&label=other"), "2");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?scenario=MESH"), "1,3,4");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?text=c.st"), "3");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?text=nothing"), "");
}

TEST_F(JobListTest, JobsAreSortedAndThoseWithoutAValueComeLast) {
    AddJobs();
    EXPECT_EQ(NumbersIn("/api/v1/jobs?order=desc"), "4,3,2,1");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?sort=finished"), "2,1,3,4");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?sort=finished&order=desc"), "1,2,3,4");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?sort=priority&order=desc"), "4,1,2,3");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?sort=scenario&order=desc"), "2,1,3,4");
}

TEST_F(JobListTest, APageKnowsHowManyThereAre) {
    AddJobs();
    EXPECT_EQ(NumbersIn("/api/v1/jobs?offset=1&limit=2"), "2,3");
    EXPECT_EQ(NumbersIn("/api/v1/jobs?offset=9"), "");
    EXPECT_TRUE(Get("/api/v1/jobs?limit=0").Has("\"total\":4,"));
    EXPECT_EQ(NumbersIn("/api/v1/jobs?sort=number&order=desc&offset=3&limit=10000"), "1");
}

TEST_F(JobListTest, FieldsReduceTheRows) {
    AddJobs();
    EXPECT_TRUE(Get("/api/v1/jobs?limit=1&fields=number,status").Has(R"("jobs":[{"number":1,"status":"Success"}])"));
    EXPECT_TRUE(Get("/api/v1/jobs?limit=1&fields=outputFolder").Has(R"("jobs":[{}])"));
}

TEST_F(JobListTest, AWrongParameterIsNamed) {
    for (const auto& [query, named] :
         std::vector<std::pair<std::string, std::string>>{{"status=Sleeping", "Sleeping"},
                                                          {"sort=color", "color"},
                                                          {"order=up", "up"},
                                                          {"limit=10001", "10000"},
                                                          {"limit=-1", "-1"},
                                                          {"offset=1x", "1x"},
                                                          {"fields=number,nothing", "nothing"},
                                                          {"page=2", "page"},
                                                          {"text=a&text=b", "text"}}) {
        const Answer answer = Get("/api/v1/jobs?" + query);
        EXPECT_EQ(answer.status, 400U) << query;
        EXPECT_TRUE(answer.Has(named)) << answer.body;
    }
}

TEST_F(JobListTest, WithoutAHostThereIsNoListAndNoneIsStarted) {
    host.runs = false;
    EXPECT_EQ(Get("/api/v1/jobs").status, 503U);
    EXPECT_TRUE(Get("/api/v1/queue").Has("\"host\":{\"running\":false"));
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(JobListTest, AHundredThousandJobsAreListedInParts) {
    for (std::int32_t number = 1; number <= 100'000; ++number) {
        host.jobs.push_back(Job(number, L"part.stl", number % 2 == 0 ? JobStatus::Success : JobStatus::Queued));
    }
    const Answer all = Get("/api/v1/jobs?limit=10000&offset=90000&fields=number");
    EXPECT_TRUE(all.Has("\"total\":100000,"));
    EXPECT_TRUE(all.Has("{\"number\":100000}]"));
    EXPECT_EQ(NumbersIn("/api/v1/jobs?status=Queued&order=desc&limit=2"), "99999,99997");
}

TEST_F(JobListTest, TheQueueIsCounted) {
    AddJobs();
    EXPECT_EQ(Get("/api/v1/jobs").status, 200U);
    const Answer answer = Get("/api/v1/queue");
    EXPECT_TRUE(answer.Has(R"("paused":false,"readOnly":false,"host":{"running":true,"process":4711)")) << answer.body;
    EXPECT_TRUE(answer.Has(R"("counts":{"queued":1,"running":1,"succeeded":1,"failed":1,"cancelled":0})"));
}

/// Strict readers refuse the escape of half a pair.
TEST_F(JobListTest, ANameThatIsNoTextIsItsCharactersAsNumbers) {
    host.jobs = {Job(1, std::wstring(L"x") + wchar_t(0xD801) + L".stl", JobStatus::Success)};
    const web::Response response = Handle(RequestOf(web::Method::Get, "/api/v1/jobs"));
    EXPECT_NE(std::get<web::Response::Text>(response.body)->find(R"(120,55297,46,115,116,108]}],"runArgument")"),
              std::string::npos);
}

TEST_F(JobListTest, WhatTheInterfaceDoesNotHaveIsToldApart) {
    EXPECT_EQ(Get("/api/v1/nothing").status, 404U);
    EXPECT_EQ(Get("/api/v2/jobs").status, 404U);
    EXPECT_EQ(Get("/").status, 404U);
    EXPECT_EQ(Post("/api/v1/queue", "{}").status, 405U);
    EXPECT_EQ(Delete("/api/v1/jobs").status, 405U);
}

TEST_F(JobListTest, TheDescriptionAndTheFiguresAreThere) {
    AddJobs();
    EXPECT_TRUE(Get("/api/v1/openapi.json").Has("\"openapi\": \"3.1.0\""));
    EXPECT_EQ(Get("/api/v1/jobs").status, 200U);
    const Answer metrics = Get("/metrics");
    EXPECT_TRUE(metrics.Has("# TYPE controller_jobs gauge\n"));
    EXPECT_TRUE(metrics.Has("controller_jobs{state=\"failed\"} 1\n"));
    EXPECT_TRUE(metrics.Has("controller_host_running 1\n"));
    EXPECT_TRUE(metrics.Has("controller_web_requests_total{code=\"200\"} 2\n")) << metrics.body;
}

} // namespace

#include "formats/WebRequests.h"

#include <gtest/gtest.h>

namespace {

std::wstring ProblemOfJobs(const std::string& body) {
    std::vector<std::wstring> jobs;
    std::wstring problem;
    return web_requests::ReadJobs(body, jobs, problem) ? L"" : problem;
}

std::wstring ProblemOfEdit(const std::string& body) {
    JobsEdit edit;
    std::wstring problem;
    return web_requests::ReadEdit(body, edit, problem) ? L"" : problem;
}

TEST(WebRequestsTest, JobsAreNamedByIdAndNumber) {
    std::vector<std::wstring> jobs;
    std::wstring problem;
    ASSERT_TRUE(web_requests::ReadJobs(R"({"ids":["1f","7"]})", jobs, problem)) << problem.c_str();
    EXPECT_EQ(jobs, (std::vector<std::wstring>{L"1f", L"7"}));
}

TEST(WebRequestsTest, ABodyWithoutJobsIsRefused) {
    EXPECT_EQ(ProblemOfJobs(R"({"ids":[]})"), L"ids: expected 1 to 100000 jobs, found 0");
    EXPECT_NE(ProblemOfJobs("{}"), L"");
    EXPECT_NE(ProblemOfJobs(""), L"");
    EXPECT_NE(ProblemOfJobs(R"(["1"])"), L"");
}

TEST(WebRequestsTest, AGroupOrAPathIsNoJob) {
    for (const char* const body : {R"({"ids":["3-9"]})", R"({"ids":[""]})", R"({"ids":["../1"]})", R"({"ids":[7]})"}) {
        EXPECT_NE(ProblemOfJobs(body), L"") << body;
    }
}

TEST(WebRequestsTest, AnUnknownMemberIsRefused) {
    EXPECT_NE(ProblemOfJobs(R"({"ids":["1"],"force":true})").find(L"force"), std::wstring::npos);
}

TEST(WebRequestsTest, AnEditHasTheChangesThatItNames) {
    JobsEdit edit;
    std::wstring problem;
    ASSERT_TRUE(web_requests::ReadEdit(R"({"ids":["7"],"hold":false,"priority":-5,"needs":{"gpu":1}})", edit, problem));
    EXPECT_EQ(edit.jobs, std::vector<std::wstring>{L"7"});
    EXPECT_EQ(edit.hold, std::optional(false));
    EXPECT_EQ(edit.priority, std::optional<std::int32_t>(-5));
    EXPECT_EQ(edit.notBefore, std::nullopt);
    EXPECT_EQ(edit.needs->at(L"gpu"), 1);
}

TEST(WebRequestsTest, AnEditWithoutOrWithAWrongChangeIsRefused) {
    EXPECT_NE(ProblemOfEdit(R"({"ids":["7"]})"), L"");
    EXPECT_NE(ProblemOfEdit(R"({"ids":["7"],"priority":2000})").find(L"from -1000 to 1000"), std::wstring::npos);
    EXPECT_NE(ProblemOfEdit(R"({"ids":["7"],"notBefore":"tomorrow"})"), L"");
}

TEST(WebRequestsTest, TheStateOfTheQueueIsRequired) {
    QueueState state;
    std::wstring problem;
    EXPECT_TRUE(web_requests::ReadQueueState(R"({"paused":true})", state, problem));
    EXPECT_TRUE(state.isPaused);
    EXPECT_FALSE(web_requests::ReadQueueState("{}", state, problem));
    EXPECT_FALSE(web_requests::ReadQueueState(R"({"paused":1})", state, problem));
    EXPECT_TRUE(state.isPaused);
}

} // namespace

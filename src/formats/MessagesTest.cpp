#include "formats/Messages.h"

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "kit/LogCapture.h"

namespace {

bool Accepts(const std::wstring& json) {
    std::vector<JobListInfo> jobs;
    return ControllerCSWrapper::Deserialize(json, jobs);
}

/// The job list with this one member.
std::vector<JobListInfo> JobWith(const std::wstring& member) {
    std::vector<JobListInfo> jobs;
    EXPECT_TRUE(ControllerCSWrapper::Deserialize(L"{\"JobList\":[{" + member + L"}]}", jobs)) << "refused";
    jobs.resize(1);
    return jobs;
}

} // namespace

TEST(MessagesTest, AJobListIsWrittenInThisLayout) {
    const JobListInfo job{L"3f9a0c1",
                          7,
                          30,
                          JobStatus::Running,
                          L"C:\\out",
                          L"C:\\work\\3f9a0c1",
                          L"2024-03-05T07:08:09Z",
                          L"",
                          {L"123", L"a\\b.rb", L"C:\\s\\a\\b.rb", L"[x]b", {{L"STL", {L"stl"}}}},
                          {L"C:\\in\\a.stl"},
                          L"fine",
                          L"\"note\""};
    EXPECT_EQ(ControllerCSWrapper::Serialize(L"JobList", std::vector{job}),
              LR"({"JobList":[{"id":"3f9a0c1","seqId":7,"progress":30,"status":1,"outputDir":"C:\\out",)"
              LR"("workDir":"C:\\work\\3f9a0c1","startTime":"2024-03-05T07:08:09Z","endTime":"",)"
              LR"("scenario":{"id":"123","relativePath":"a\\b.rb","path":"C:\\s\\a\\b.rb","displayName":"[x]b",)"
              LR"("inputs":[{"cadName":"STL","extensions":["stl"]}]},"inputFiles":["C:\\in\\a.stl"],)"
              LR"("runArgument":"fine","extraText":"\"note\""}]})");
}

TEST(MessagesTest, EventsAreWrittenUnderTheirNamesAndReadBack) {
    ScheduledRequest request;
    request.requestId = L"r";
    ScheduledRequest readRequest;
    EXPECT_TRUE(
        messages::Deserialize(events::enqueueJobs, messages::Serialize(events::enqueueJobs, request), readRequest));
    EXPECT_EQ(readRequest, request);
    std::vector<JobStatusInfo> changed(1);
    changed[0].id = L"a";
    std::vector<JobStatusInfo> readChanged;
    EXPECT_TRUE(messages::Deserialize(events::updateProgress, messages::Serialize(events::updateProgress, changed),
                                      readChanged));
    EXPECT_EQ(readChanged, changed);
    EXPECT_EQ(messages::Serialize(events::cancelJobs, {L"a"}), L"{\"CancelJobs\":[\"a\"]}");
    EXPECT_EQ(messages::Serialize(events::requestRefused, L"no"), L"{\"RequestRefused\":\"no\"}");
    EXPECT_EQ(messages::Serialize(events::terminateRequest, {}), L"{\"TerminateRequest\":null}");
}

TEST(MessagesTest, OtherMessagesAreWrittenInTheseLayouts) {
    EXPECT_EQ(ControllerCSWrapper::Serialize(L"CancelAllJobs"), L"{\"CancelAllJobs\":null}");
    EXPECT_EQ(ControllerCSWrapper::Serialize(L"CancelJobs", std::vector<std::wstring>{L"a", L"3"}),
              L"{\"CancelJobs\":[\"a\",\"3\"]}");
    EXPECT_EQ(ControllerCSWrapper::Serialize(L"CancelJobs", std::vector<std::wstring>()), L"{\"CancelJobs\":[]}");
    EXPECT_EQ(
        ControllerCSWrapper::Serialize(L"EnqueueJobs", EnqueueJobsInfo{L"r", {{L"a"}, {}}, {}, L"o", L"x", L"y", true}),
        L"{\"EnqueueJobs\":{\"requestId\":\"r\",\"inputFileSets\":[[\"a\"],[]],\"scenario\":{\"id\":\"\","
        L"\"relativePath\":\"\",\"path\":\"\",\"displayName\":\"\",\"inputs\":[]},\"outputDir\":\"o\","
        L"\"runArgument\":\"x\",\"extraText\":\"y\",\"useTimeStampFolder\":true}}");
    EXPECT_EQ(messages::Serialize(L"EnqueueJobsFinish", JobEnqueueResult{{{L"a", 1}}, L"r", {{}}}),
              L"{\"EnqueueJobsFinish\":{\"jobIds\":[{\"id\":\"a\",\"seqId\":1}],\"requestId\":\"r\","
              L"\"inputSetResults\":[[]]}}");
    EXPECT_EQ(run_protocol::SerializeProcessHandle(nullptr), L"{\"ProcessHandle\":\"0x0\"}");
}

TEST(MessagesTest, CharactersAreWrittenAsTheyAreWhereJsonAllows) {
    EXPECT_EQ(messages::Serialize(L"T", std::wstring(L"\u00e9\u65e5\U0001F600\x7f/")),
              L"{\"T\":\"\u00e9\u65e5\U0001F600\x7f/\"}");
    EXPECT_EQ(messages::Serialize(L"T", std::wstring(L"\"\\\b\f\n\r\t\x01\x1f\0", 10)),
              LR"({"T":"\"\\\b\f\n\r\t\u0001\u001f\u0000"})");
    EXPECT_EQ(messages::Serialize(L"T", std::wstring{wchar_t{0xD800}}), LR"({"T":"\ud800"})");
}

TEST(MessagesTest, MissingMembersTakeTheirDefaults) {
    std::vector<JobListInfo> jobs;
    ASSERT_TRUE(ControllerCSWrapper::Deserialize(L"{\"JobList\":[{}]}", jobs));
    EXPECT_EQ(jobs, std::vector{JobListInfo{}});
    EXPECT_EQ(jobs.at(0).seqId, 0);
}

TEST(MessagesTest, UnknownMembersArePassedOver) {
    EXPECT_TRUE(Accepts(LR"({"JobList":[{"later":{"a":[1.5e300,{"b":null}],"a":2},"id":"x","":[]}]})"));
}

TEST(MessagesTest, AnyStatusOf32BitsIsTaken) {
    EXPECT_EQ(JobWith(L"\"status\":-1")[0].status, static_cast<JobStatus>(-1));
    EXPECT_EQ(JobWith(L"\"status\":7")[0].status, static_cast<JobStatus>(7));
    EXPECT_EQ(JobWith(L"\"status\":-2147483648")[0].status, static_cast<JobStatus>(INT32_MIN));
    EXPECT_EQ(JobWith(L"\"status\":2147483647")[0].status, static_cast<JobStatus>(INT32_MAX));
}

TEST(MessagesTest, WholeNumbersAreExact) {
    EXPECT_EQ(JobWith(L"\"seqId\":2147483647")[0].seqId, INT32_MAX);
    EXPECT_EQ(JobWith(L"\"seqId\":-2147483648")[0].seqId, INT32_MIN);
    EXPECT_EQ(JobWith(L"\"seqId\":-0")[0].seqId, 0);
    for (const wchar_t* number : {L"2147483648", L"-2147483649", L"4294967296", L"1.0", L"1e2", L"0.5", L"-1E1",
                                  L"123456789012345678901234567890", L"\"5\"", L"true", L"null", L"[]", L"{}"}) {
        EXPECT_FALSE(Accepts(std::wstring(L"{\"JobList\":[{\"seqId\":") + number + L"}]}")) << number;
    }
}

TEST(MessagesTest, AMemberOfTheWrongTypeRefusesTheWholeText) {
    for (const wchar_t* member : {L"\"id\":1",
                                  L"\"id\":null",
                                  L"\"id\":true",
                                  L"\"id\":[]",
                                  L"\"id\":{}",
                                  L"\"id\":{\"codePoints\":[]}",
                                  L"\"id\":{\"codePoints\":[\"a\"]}",
                                  L"\"id\":{\"codePoints\":[-1]}",
                                  L"\"id\":{\"codePoints\":[4294967296]}",
                                  L"\"id\":{\"codePoints\":[65],\"codePoints\":[66]}",
                                  L"\"status\":\"Queued\"",
                                  L"\"scenario\":[]",
                                  L"\"scenario\":\"\"",
                                  L"\"scenario\":null",
                                  L"\"scenario\":{\"inputs\":{}}",
                                  L"\"scenario\":{\"inputs\":[1]}",
                                  L"\"inputFiles\":\"a\"",
                                  L"\"inputFiles\":[1]",
                                  L"\"inputFiles\":[[]]",
                                  L"\"inputFiles\":null",
                                  L"\"id\":\"a\",\"id\":\"a\""}) {
        EXPECT_FALSE(Accepts(std::wstring(L"{\"JobList\":[{\"id\":\"good\"},{") + member + L"}]}")) << member;
    }
}

TEST(MessagesTest, AMessageIsAnObjectWithOneMember) {
    for (const wchar_t* json : {L"{}", L"[]", L"[[]]", L"null", L"1", L"\"JobList\"", L"", L" ", L"{\"a\":[],\"b\":[]}",
                                L"{\"a\":[],\"a\":[]}", L"{\"a\":[]}{}", L"{\"a\":[]},", L"{\"a\":null}"}) {
        EXPECT_FALSE(Accepts(json)) << json;
    }
    EXPECT_TRUE(Accepts(L" { \"of any name\" : [ ] } "));
}

TEST(MessagesTest, ListsAreAppendedTo) {
    std::vector<std::wstring> texts = {L"a"};
    ASSERT_TRUE(ControllerCSWrapper::Deserialize(L"{\"T\":[\"b\",\"c\"]}", texts));
    EXPECT_EQ(texts, (std::vector<std::wstring>{L"a", L"b", L"c"}));
}

TEST(MessagesTest, OtherValuesAreReplaced) {
    JobEnqueueResult result{{{L"old", 1}}, L"old", {{L"old"}}};
    ASSERT_TRUE(ControllerCSWrapper::Deserialize(L"{\"T\":{\"requestId\":\"new\"}}", result));
    EXPECT_EQ(result, (JobEnqueueResult{{}, L"new", {}}));
    std::wstring text = L"old";
    ASSERT_TRUE(ControllerCSWrapper::Deserialize(L"{\"T\":\"new\"}", text));
    EXPECT_EQ(text, L"new");
}

TEST(MessagesTest, ARefusalLeavesTheOutputAsItWas) {
    std::vector<JobStatusInfo> statuses(2);
    EXPECT_FALSE(ControllerCSWrapper::Deserialize(L"{\"T\":[{\"id\":\"a\"},{\"id\":1}]}", statuses));
    EXPECT_EQ(statuses, std::vector<JobStatusInfo>(2));
    JobEnqueueResult result{{}, L"old", {}};
    EXPECT_FALSE(ControllerCSWrapper::Deserialize(L"{\"T\":{\"requestId\":\"new\",\"jobIds\":1}}", result));
    EXPECT_EQ(result, (JobEnqueueResult{{}, L"old", {}}));
    ScheduledRequest request{{L"old", {}, {}, L"", L"", L"", false}, {}};
    EXPECT_FALSE(messages::Deserialize(L"{\"T\":{\"requestId\":\"new\"}", request));
    EXPECT_EQ(request.requestId, L"old");
}

TEST(MessagesTest, ARefusalIsLoggedWithItsPlaceAndMember) {
    const LogCapture log;
    EXPECT_FALSE(Accepts(L"{\"UpdateJobList\":[{},\n  {\"scenario\":{\"id\":5}}]}"));
    EXPECT_NE(log.Text().find("line 2, column 21: UpdateJobList[1].scenario.id: expected text, found a number"),
              std::string::npos)
        << log.Text();
}

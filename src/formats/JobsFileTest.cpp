#include <algorithm>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobsFile.h"
#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

class JobsFileTest : public testing::Test {
protected:
    bool Read(std::string_view content) {
        WriteTextFile(path, content);
        return ControllerCSWrapper::ReadEnqueueJobsFile(path, requests);
    }

    std::wstring Native() const { return platform::ToNativeText(path); }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"jobs\\jobs file \u00e9.json";
    const LogCapture log;
    std::vector<EnqueueJobsInfo> requests;
    std::vector<ScheduledRequest> scheduled;
};

} // namespace

TEST_F(JobsFileTest, RequestsAreReadInOrder) {
    ASSERT_TRUE(Read(R"({"EnqueueJobs":[{"scenario":{"id":"1234"},"outputDir":"C:\\out","runArgument":"fine",)"
                     R"("extraText":"e","useTimeStampFolder":true,"requestId":"r"},{"scenario":{"id":"5"}}]})"));
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].scenario.id, L"1234");
    EXPECT_EQ(requests[0].runArgument, L"fine");
    EXPECT_EQ(requests[0].extraText, L"e");
    EXPECT_EQ(requests[0].requestId, L"r");
    EXPECT_TRUE(requests[0].useTimeStampFolder);
    EXPECT_EQ(requests[1].scenario.id, L"5");
    EXPECT_EQ(requests[1].outputDir, L"");
}

TEST_F(JobsFileTest, RelativePathsAreRelativeToTheFile) {
    ASSERT_TRUE(Read(R"({"EnqueueJobs":[{"inputFileSets":[["a.stl","../b c.stl"],["sub\\c.stl",""],[]],)"
                     R"("outputDir":"out/x"}]})"));
    EXPECT_EQ(requests.at(0).inputFileSets,
              (std::vector<std::vector<std::wstring>>{
                  {directory / L"jobs\\a.stl", directory / L"b c.stl"}, {directory / L"jobs\\sub\\c.stl", L""}, {}}));
    EXPECT_EQ(requests[0].outputDir, directory / L"jobs\\out\\x");
}

TEST_F(JobsFileTest, AFileWithoutANameIsReadLikeOneInTheCurrentDirectory) {
    std::wstring problem;
    ASSERT_TRUE(jobs_file::ReadText(R"({"EnqueueJobs":[{"inputFileSets":[["a.stl"]],"outputDir":"out"}]})", L"input",
                                    scheduled, problem));
    EXPECT_EQ(scheduled.at(0).outputDir, platform::ResolveAgainst(platform::CurrentDirectory(), L"out"));
    EXPECT_EQ(scheduled.at(0).inputFileSets.at(0).at(0),
              platform::ResolveAgainst(platform::CurrentDirectory(), L"a.stl"));
    EXPECT_FALSE(jobs_file::ReadText("{\"EnqueueJobs\":\n7}", L"input", scheduled, problem));
    EXPECT_EQ(problem.find(L"input, line 2, column 1: "), 0U);
    EXPECT_EQ(scheduled.size(), 1U);
}

TEST_F(JobsFileTest, AbsolutePathsStay) {
    const std::wstring absolute = directory / L"elsewhere\\a.stl";
    const EnqueueJobsInfo request{L"", {{absolute}}, {absolute, L"", L"", L"", {}}, absolute, L"", L"", false};
    std::wstring json = ControllerCSWrapper::Serialize(L"EnqueueJobs", request);
    json.insert(json.find(L':') + 1, L"[").insert(json.size() - 1, L"]");
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(json, path));
    ASSERT_TRUE(ControllerCSWrapper::ReadEnqueueJobsFile(path, requests));
    EXPECT_EQ(requests, std::vector{request});
}

TEST_F(JobsFileTest, AScenarioBesideTheFileIsTakenFromThere) {
    WriteTextFile(directory / L"jobs\\mesh.rb", "");
    WriteTextFile(directory / L"common\\part.rb", "");
    WriteTextFile(directory / L"jobs\\folder\\in it", "");
    ASSERT_TRUE(Read(R"({"EnqueueJobs":[{"scenario":{"id":"mesh.rb"}},{"scenario":{"id":"../common/part.rb"}},)"
                     R"({"scenario":{"id":"other.rb"}},{"scenario":{"id":"folder"}},{"scenario":{"id":""}}]})"));
    ASSERT_EQ(requests.size(), 5U);
    EXPECT_EQ(requests[0].scenario.id, directory / L"jobs\\mesh.rb");
    EXPECT_EQ(requests[1].scenario.id, directory / L"common\\part.rb");
    EXPECT_EQ(requests[2].scenario.id, L"other.rb");
    EXPECT_EQ(requests[3].scenario.id, L"folder");
    EXPECT_EQ(requests[4].scenario.id, L"");
}

TEST_F(JobsFileTest, RequestsAreAppended) {
    requests.resize(1);
    ASSERT_TRUE(Read(R"({"EnqueueJobs":[{}]})"));
    EXPECT_EQ(requests.size(), 2U);
}

TEST_F(JobsFileTest, ABrokenFileIsRefusedWithItsPlaceAndMember) {
    for (const char* bad : {"", "{}", "[]", R"({"JobList":[]})", R"({"EnqueueJobs":{}})", R"({"EnqueueJobs":[1]})",
                            R"({"EnqueueJobs":[{}],"EnqueueJobs":[]})", R"({"EnqueueJobs":[{"useTimeStampFolder":1}]})",
                            R"({"EnqueueJobs":[{"inputFileSets":["a.stl"]}]})"}) {
        EXPECT_FALSE(Read(bad)) << bad;
    }
    EXPECT_TRUE(requests.empty());
    EXPECT_FALSE(Read("{\"EnqueueJobs\":[{},{},{},\n{\"inputFileSets\":[[\"a\",1]]}]}"));
    EXPECT_NE(
        log.Text().find(".json, line 2, column 24: EnqueueJobs[3].inputFileSets[0][1]: expected text, found a number"),
        std::string::npos)
        << log.Text();
    EXPECT_NE(log.Text().find("line 1, column 2: the member \"EnqueueJobs\" is missing"), std::string::npos)
        << log.Text();
}

TEST_F(JobsFileTest, AMemberWithoutMeaningIsRefusedWithTheOneThatMayBeMeant) {
    const std::vector<std::pair<std::string, std::wstring>> table = {
        {R"({"EnqueueJobs":[{"inputFileSet":[["a.stl"]]}]})",
         L"line 1, column 18: EnqueueJobs[0].inputFileSet: there is no such member "
         L"(\"inputFileSet\": did you mean \"inputFileSets\"?)"},
        {"{\"EnqueueJobs\":[\n{},{\"scenario\":{\"Id\":\"r.rb\"}}]}",
         L"line 2, column 17: EnqueueJobs[1].scenario.Id: there is no such member (\"Id\": did you mean \"id\"?)"},
        {R"({"EnqueueJobs":[{"colour":1}]})", L"line 1, column 18: EnqueueJobs[0].colour: there is no such member"},
        {R"({"EnqueueJob":[]})", L"line 1, column 2: EnqueueJob: there is no such member (\"EnqueueJob\": did you mean "
                                 L"\"EnqueueJobs\"?)\n" +
                                     Native() + L", line 1, column 17: the member \"EnqueueJobs\" is missing"},
    };
    for (const auto& [content, expected] : table) {
        EXPECT_FALSE(Read(content)) << content;
        std::wstring problem;
        EXPECT_FALSE(jobs_file::Read(path, scheduled, problem)) << content;
        EXPECT_EQ(problem, Native() + L", " + expected);
    }
    EXPECT_TRUE(scheduled.empty());
    EXPECT_NE(log.Text().find("\"inputFileSet\": did you mean \"inputFileSets\"?"), std::string::npos) << log.Text();
}

TEST_F(JobsFileTest, TheFirstMembersWithoutMeaningAreNamedTogether) {
    std::string content = R"({"EnqueueJobs":[)";
    for (int i = 0; i < 100; ++i) {
        content += R"({"x":1,"outputDirectory":""},)";
    }
    WriteTextFile(path, content + "{}]}");
    std::wstring problem;
    EXPECT_FALSE(jobs_file::Read(path, scheduled, problem));
    EXPECT_EQ(std::count(problem.begin(), problem.end(), L'\n'), 19) << text::ToUtf8(problem);
}

TEST_F(JobsFileTest, ARequestMaySayWhetherResultsAreReused) {
    std::wstring problem;
    WriteTextFile(path, R"({"EnqueueJobs":[{"reuse":true},{"reuse":false},{}]})");
    ASSERT_TRUE(jobs_file::Read(path, scheduled, problem)) << text::ToUtf8(problem);
    ASSERT_EQ(scheduled.size(), 3U);
    EXPECT_EQ(scheduled[0].reuse, true);
    EXPECT_EQ(scheduled[1].reuse, false);
    EXPECT_EQ(scheduled[2].reuse, std::nullopt);
    WriteTextFile(path, R"({"EnqueueJobs":[{"reuse":"yes"}]})");
    EXPECT_FALSE(jobs_file::Read(path, scheduled, problem));
}

TEST_F(JobsFileTest, ARequestSaysWhenItsJobsStart) {
    std::wstring problem;
    WriteTextFile(path, R"({"EnqueueJobs":[{"priority":-3,"hold":true,"after":["1","a"],"afterEnd":["2"],)"
                        R"("skipIfAfterFails":true,"notBefore":"2024-02-29T23:59:59Z","needs":{"cad":2},)"
                        R"("retries":2,"retryDelay":"30s","retryBackoff":true,"retryOnlyAfterCrash":true,)"
                        R"("timeLimit":"2h","silenceLimit":90,"memoryLimitMiB":4000,"cpuLimitPercent":150}]})");
    ASSERT_TRUE(jobs_file::Read(path, scheduled, problem));
    EXPECT_EQ(static_cast<const Scheduling&>(scheduled.at(0)), (Scheduling{{2, 30, true, true, 7200, 90, 4000, 150},
                                                                           -3,
                                                                           true,
                                                                           {L"1", L"a"},
                                                                           {L"2"},
                                                                           true,
                                                                           1709251199,
                                                                           {{L"cad", 2}}}));
    EXPECT_TRUE(ControllerCSWrapper::ReadEnqueueJobsFile(path, requests));
    for (const auto& [wrong, expected] :
         {std::pair(R"("priority":1001)", L"priority: expected a whole number from -1000 to 1000"),
          std::pair(R"("notBefore":"soon")", L"notBefore: expected a UTC time"),
          std::pair(R"("retries":101)", L"retries: expected a whole number from 0 to 100"),
          std::pair(R"("timeLimit":"long")", L"timeLimit: expected a duration"),
          std::pair(R"("memoryLimitMiB":-1)", L"memoryLimitMiB: expected a whole number of MiB from 0 (no limit)"),
          std::pair(R"("cpuLimitPercent":100001)", L"cpuLimitPercent: expected a percentage from 0 (no limit)"),
          std::pair(R"("needs":{"cad":0})", L"needs.cad: expected a whole number of at least 1")}) {
        WriteTextFile(path, R"({"EnqueueJobs":[{)" + std::string(wrong) + "}]}");
        EXPECT_FALSE(jobs_file::Read(path, scheduled, problem)) << wrong;
        EXPECT_NE(problem.find(std::wstring(L"EnqueueJobs[0].") + expected), std::wstring::npos)
            << text::ToUtf8(problem);
    }
}

TEST_F(JobsFileTest, AProblemOfAnotherReadIsForgotten) {
    std::wstring problem = L"old";
    WriteTextFile(path, R"({"EnqueueJobs":[{}]})");
    EXPECT_TRUE(jobs_file::Read(path, scheduled, problem));
    EXPECT_EQ(problem, L"");
}

TEST_F(JobsFileTest, AMissingFileIsRefusedWithALogLine) {
    EXPECT_FALSE(ControllerCSWrapper::ReadEnqueueJobsFile(directory / L"none.json", requests));
    EXPECT_NE(log.Text().find("none.json: "), std::string::npos) << log.Text();
}

TEST_F(JobsFileTest, AVeryLargeFileIsRead) {
    constexpr std::size_t setCount = JOBS_FILE_MEGABYTES * std::size_t{4'000};
    const std::string directoryName(220, 'm');
    std::string content = R"({"EnqueueJobs":[{"inputFileSets":[)";
    for (std::size_t i = 0; i < setCount; ++i) {
        content += (i == 0 ? "[\"" : ",[\"") + directoryName + "/the assembly/part_" + std::to_string(i) + ".stl\"]";
    }
    content += "]}]}";
    ASSERT_GT(content.size(), JOBS_FILE_MEGABYTES * 1'000'000U);
    ASSERT_TRUE(Read(content));
    ASSERT_EQ(requests.at(0).inputFileSets.size(), setCount);
    EXPECT_EQ(requests[0].inputFileSets.back().at(0),
              directory / (L"jobs\\" + std::wstring(220, L'm') + L"\\the assembly\\part_" +
                           std::to_wstring(setCount - 1) + L".stl"));
}

TEST_F(JobsFileTest, ThePlacesOfRequestsAndSetsAreTold) {
    WriteTextFile(path, "\xEF\xBB\xBF"
                        R"({"x":[[1]],"EnqueueJobs":[)"
                        "\n {},\n"
                        R"(  {"EnqueueJobs":[{}],"a":null,)"
                        "\n"
                        R"(   "inputFileSets":[[],["ä"], [[]]]}, 5 ]})");
    EXPECT_EQ(jobs_file::PlaceOf(path, 0), L"line 2, column 2");
    EXPECT_EQ(jobs_file::PlaceOf(path, 1), L"line 3, column 3");
    EXPECT_EQ(jobs_file::PlaceOf(path, 2), L"line 4, column 39");
    EXPECT_EQ(jobs_file::PlaceOf(path, 3), L"");
    EXPECT_EQ(jobs_file::PlaceOf(path, 0, 0), L"");
    EXPECT_EQ(jobs_file::PlaceOf(path, 1, 0), L"line 4, column 21");
    EXPECT_EQ(jobs_file::PlaceOf(path, 1, 1), L"line 4, column 24");
    EXPECT_EQ(jobs_file::PlaceOf(path, 1, 2), L"line 4, column 31");
    EXPECT_EQ(jobs_file::PlaceOf(path, 1, 3), L"");
    EXPECT_EQ(jobs_file::PlaceOf(directory / L"missing.json", 0), L"");
    WriteTextFile(path, std::string(1000, '['));
    EXPECT_EQ(jobs_file::PlaceOf(path, 0), L"");
}

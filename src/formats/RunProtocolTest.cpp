#include "formats/RunProtocol.h"

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

struct Progress {
    bool isRead = false;
    std::wstring message = L"old";
    int progress = -7;
    bool operator==(const Progress&) const = default;
};

struct Result {
    bool isRead = false;
    bool succeeded = false;
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> outputFiles;
    bool operator==(const Result&) const = default;
};

class RunProtocolTest : public testing::Test {
protected:
    Progress ReadProgress(std::string_view content) const {
        WriteTextFile(path, content);
        return ReadProgress();
    }
    Progress ReadProgress() const {
        Progress progress;
        progress.isRead = ControllerCSWrapper::ParseProgressFile(path, progress.message, progress.progress);
        return progress;
    }
    Result ReadResult(std::string_view content) const {
        WriteTextFile(path, content);
        Result result;
        result.isRead =
            ControllerCSWrapper::ParseRunScenarioResult(path, result.succeeded, result.messages, result.outputFiles);
        return result;
    }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"report.json";
    const LogCapture log;
};

} // namespace

TEST_F(RunProtocolTest, TheRunRequestIsWrittenInThisLayout) {
    std::wstring json = L"old";
    ASSERT_TRUE(ControllerCSWrapper::CreateRunScenarioInfoString(
        L"3f9a0c1", L"C:\\s\\a.rb", {L"C:\\in\\a.stl"}, L"C:\\out", L"C:\\work\\3f9a0c1", L"--fine \"1\"", json));
    EXPECT_EQ(json, LR"({"version":1,"jobId":"3f9a0c1","scenarioPath":"C:\\s\\a.rb","inputFiles":["C:\\in\\a.stl"],)"
                    LR"("outputFolder":"C:\\out","workDir":"C:\\work\\3f9a0c1","runArgument":"--fine \"1\""})");
    run_protocol::RunScenarioInfo info;
    std::wstring problem;
    ASSERT_TRUE(run_protocol::ParseRunScenarioInfo(json, info, problem));
    EXPECT_EQ(info,
              (run_protocol::RunScenarioInfo{
                  L"3f9a0c1", L"C:\\s\\a.rb", {L"C:\\in\\a.stl"}, L"C:\\out", L"C:\\work\\3f9a0c1", L"--fine \"1\""}));
}

TEST_F(RunProtocolTest, ReportsAreWrittenInTheseLayouts) {
    EXPECT_EQ(run_protocol::SerializeProgress(L"3f9a0c1", 30, L"reading"),
              LR"({"version":1,"jobId":"3f9a0c1","progressInfoList":[{"progress":30,"message":"reading"}]})");
    EXPECT_EQ(run_protocol::SerializeRunScenarioResult({L"3f9a0c1", true, {{-1, L"x"}}, {L"/out/report.json"}}),
              LR"({"version":1,"jobId":"3f9a0c1","succeeded":true,"messages":[{"code":-1,"text":"x"}],)"
              LR"("outputFiles":["/out/report.json"]})");
}

TEST_F(RunProtocolTest, ARunRequestFileIsRead) {
    WriteTextFile(path, R"({"jobId":"3f9a0c1","inputFiles":["/in/a.stl"]})");
    run_protocol::RunScenarioInfo info;
    std::wstring problem;
    ASSERT_TRUE(run_protocol::ReadRunScenarioInfoFile(path, info, problem)) << problem.c_str();
    EXPECT_EQ(info, (run_protocol::RunScenarioInfo{L"3f9a0c1", L"", {L"/in/a.stl"}, L"", L"", L""}));
}

TEST_F(RunProtocolTest, AProblemNamesTheFile) {
    WriteTextFile(path, "{\n\"jobId\": 5}");
    run_protocol::RunScenarioInfo info{L"old", L"", {}, L"", L"", L""};
    std::wstring problem;
    EXPECT_FALSE(run_protocol::ReadRunScenarioInfoFile(path, info, problem));
    EXPECT_EQ(problem, platform::ToNativeText(path) + L", line 2, column 10: jobId: expected text, found a number");
    EXPECT_EQ(info.jobId, L"old");
    EXPECT_FALSE(run_protocol::ReadRunScenarioInfoFile(directory / L"none.json", info, problem));
    EXPECT_TRUE(problem.starts_with(platform::ToNativeText(directory / L"none.json") + L": ")) << problem.c_str();
}

TEST_F(RunProtocolTest, TheLastProgressOfTheListIsTheCurrentOne) {
    EXPECT_EQ(ReadProgress(R"({"version":1,"jobId":"a","progressInfoList":[{"progress":10,"message":"one"},)"
                           R"({"progress":30,"message":"two"}]})"),
              (Progress{true, L"two", 30}));
    EXPECT_EQ(ReadProgress(R"({"progressInfoList":[{"progress":-2147483648}]})"), (Progress{true, L"", INT32_MIN}));
    EXPECT_EQ(ReadProgress("\xEF\xBB\xBF{\"progressInfoList\":[{\"progress\":1000}]}"), (Progress{true, L"", 1000}));
}

TEST_F(RunProtocolTest, AMissingOrHalfWrittenProgressFileIsSilentlyNotRead) {
    EXPECT_EQ(ReadProgress(), Progress());
    const std::string content = R"({"version":1,"jobId":"a","progressInfoList":[{"progress":30,"message":"\u00e9"}]})";
    for (std::size_t length = 0; length < content.size(); ++length) {
        EXPECT_EQ(ReadProgress(content.substr(0, length)), Progress()) << length;
    }
    for (const char* bad : {"{}", R"({"progressInfoList":[]})", R"({"progressInfoList":[{"progress":1.5}]})",
                            R"({"progressInfoList":[{"progress":"30"}]})", "{\"progressInfoList\":[{}]}\xFF",
                            R"({"version":2,"progressInfoList":[{"progress":30}]})"}) {
        EXPECT_EQ(ReadProgress(bad), Progress()) << bad;
    }
    EXPECT_EQ(log.Text(), "");
}

TEST_F(RunProtocolTest, AProgressTextNamesItsJob) {
    std::wstring jobId;
    std::wstring message;
    int progress = 0;
    EXPECT_TRUE(ControllerCSWrapper::ParseProgressFileString(
        L"{\"jobId\":\"a\",\"progressInfoList\":[{\"progress\":1},{\"progress\":2,\"message\":\"m\"}]}", jobId, message,
        progress));
    EXPECT_EQ(jobId, L"a");
    EXPECT_EQ(message, L"m");
    EXPECT_EQ(progress, 2);
    EXPECT_FALSE(ControllerCSWrapper::ParseProgressFileString(L"{\"jobId\":\"b\"}", jobId, message, progress));
    EXPECT_EQ(jobId, L"a");
}

TEST_F(RunProtocolTest, AResultIsRead) {
    EXPECT_EQ(ReadResult(R"({"version":1,"jobId":"a","succeeded":true,"messages":[{"code":3,"text":"x"},{"text":"y"}],)"
                         R"("outputFiles":["/out/a","/out/b"]})"),
              (Result{true, true, {{3, L"x"}, {0, L"y"}}, {L"/out/a", L"/out/b"}}));
    EXPECT_EQ(ReadResult("{}"), (Result{true, false, {}, {}}));
}

TEST_F(RunProtocolTest, AResultAppendsToItsLists) {
    std::wstring jobId = L"old";
    bool succeeded = false;
    std::vector<std::pair<int, std::wstring>> pairs = {{1, L"one"}};
    std::vector<std::wstring> texts = {L"one"};
    ASSERT_TRUE(ControllerCSWrapper::ParseRunScenarioResultString(
        LR"({"jobId":"a","succeeded":true,"messages":[{"code":2,"text":"two"}],"outputFiles":["two"]})", jobId,
        succeeded, pairs, texts));
    EXPECT_TRUE(succeeded);
    EXPECT_EQ(jobId, L"a");
    EXPECT_EQ(pairs, (std::vector<std::pair<int, std::wstring>>{{1, L"one"}, {2, L"two"}}));
    EXPECT_EQ(texts, (std::vector<std::wstring>{L"one", L"two"}));
    EXPECT_FALSE(ControllerCSWrapper::ParseRunScenarioResultString(L"{\"jobId\":\"b\",\"succeeded\":\"no\"}", jobId,
                                                                   succeeded, pairs, texts));
    EXPECT_EQ(jobId, L"a");
    EXPECT_EQ(pairs.size(), 2U);
}

TEST_F(RunProtocolTest, AWorkDirectoryThatWasRemovedIsNotMadeAgain) {
    EXPECT_FALSE(run_protocol::WriteFile(L"{}", directory / L"3f9a0c1\\run_scenario_result.json"));
    EXPECT_FALSE(platform::Exists(directory / L"3f9a0c1"));
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"3f9a0c1"));
    EXPECT_TRUE(run_protocol::WriteFile(L"{}", directory / L"3f9a0c1\\run_scenario_result.json"));
}

TEST_F(RunProtocolTest, ABrokenResultIsRefusedWithALogLine) {
    for (const char* bad : {"", "{", "[]", R"({"succeeded":1})", R"({"messages":[["code",1]]})",
                            R"({"outputFiles":[1]})", R"({"version":2})", "{\"jobId\":\"\xC3\"}"}) {
        EXPECT_EQ(ReadResult(bad), Result()) << bad;
    }
    EXPECT_NE(log.Text().find("report.json, line 1, column 14: succeeded: expected true or false, found a number"),
              std::string::npos)
        << log.Text();
    EXPECT_NE(log.Text().find("line 1, column 11: not UTF-8"), std::string::npos) << log.Text();
}

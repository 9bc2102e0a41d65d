#include "controller_cli/JsonOutput.h"

#include <gtest/gtest.h>

namespace {

using controller_cli::JobRow;

bool Has(const std::wstring& json, const std::wstring& member) {
    return json.find(member) != std::wstring::npos;
}

TEST(JsonOutputTest, FoldersAndProgressAreTheViews) {
    JobRow view;
    view.job.seqId = 7;
    view.job.status = JobStatus::Canceled;
    view.job.progress = 100;
    view.job.outputDir = L"/reports";
    view.job.workDir = L"/work/id7";
    view.progress = 30;
    const std::wstring json = controller_cli::JobsJson({view});
    EXPECT_TRUE(Has(json, L"\"outputFolder\":\"\",\"workFolder\":\"\""));
    EXPECT_TRUE(Has(json, L"\"progress\":30,"));
}

TEST(JsonOutputTest, AJobHasItsMessagesAndOutputFiles) {
    JobRow view;
    view.message = L"First";
    view.messages = {L"First", L"Second\nline"};
    view.outputFiles = {L"picture.png"};
    const std::wstring json = controller_cli::JobsJson({view});
    EXPECT_TRUE(Has(json, L"\"message\":\"First\""));
    EXPECT_TRUE(Has(json, L"\"messages\":[\"First\",\"Second\\nline\"],\"outputFiles\":[\"picture.png\"]}"));
}

TEST(JsonOutputTest, ADocumentIsOneLineWithAVersion) {
    JobRow view;
    view.messages = {L"a\r\nb"};
    const std::wstring json = controller_cli::JobsJson({view, view});
    EXPECT_TRUE(json.starts_with(L"{\"version\":1,\"jobs\":[{"));
    EXPECT_EQ(json.find(L'\n'), json.size() - 1);
    EXPECT_EQ(controller_cli::ScenariosJson({}), L"{\"version\":1,\"scenarios\":[]}\n");
    EXPECT_EQ(controller_cli::ParameterSetsJson({}), L"{\"version\":1,\"parameterSets\":[]}\n");
}

TEST(JsonOutputTest, ADeletedJobIsToldSo) {
    JobRow view;
    view.job.status = controller_cli::deletedStatus;
    EXPECT_TRUE(Has(controller_cli::JobsJson({view}), L"\"status\":\"Deleted\""));
}

} // namespace

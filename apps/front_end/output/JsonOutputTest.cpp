#include "front_end/output/JsonOutput.h"
#include "formats/JobStates.h"

#include <gtest/gtest.h>

namespace {

using front_end::JobRow;

bool Has(const std::wstring& json, const std::wstring& member) {
    return json.find(member) != std::wstring::npos;
}

TEST(JsonOutputTest, DirectoriesAndProgressAreTheViews) {
    JobRow view;
    view.job.seqId = 7;
    view.job.status = JobStatus::Canceled;
    view.job.progress = 100;
    view.job.outputDir = L"/reports";
    view.job.workDir = L"/work/id7";
    view.progress = 30;
    const std::wstring json = front_end::JobsJson({view});
    EXPECT_TRUE(Has(json, L"\"outputFolder\":\"\",\"workFolder\":\"\""));
    EXPECT_TRUE(Has(json, L"\"progress\":30,"));
}

TEST(JsonOutputTest, AJobHasItsMessagesAndOutputFiles) {
    JobRow view;
    view.message = L"First";
    view.messages = {L"First", L"Second\nline"};
    view.outputFiles = {L"picture.png"};
    const std::wstring json = front_end::JobsJson({view});
    EXPECT_TRUE(Has(json, L"\"message\":\"First\""));
    EXPECT_TRUE(Has(json, L"\"messages\":[\"First\",\"Second\\nline\"],\"outputFiles\":[\"picture.png\"]}"));
}

TEST(JsonOutputTest, ADocumentIsOneLineWithAVersion) {
    JobRow view;
    view.messages = {L"a\r\nb"};
    const std::wstring json = front_end::JobsJson({view, view});
    EXPECT_TRUE(json.starts_with(L"{\"version\":1,\"jobs\":[{"));
    EXPECT_EQ(json.find(L'\n'), json.size() - 1);
    EXPECT_EQ(front_end::ScenariosJson({}), L"{\"version\":1,\"scenarios\":[]}\n");
    EXPECT_EQ(front_end::ParameterSetsJson({}), L"{\"version\":1,\"parameterSets\":[]}\n");
}

TEST(JsonOutputTest, AJobHasEveryMemberInTheOrderOfTheDocument) {
    JobRow view;
    view.job.seqId = 7;
    view.job.id = L"id7";
    view.job.status = JobStatus::Success;
    view.job.scenario.displayName = L"Mesh report";
    view.job.inputFiles = {L"part.stl"};
    view.job.runArgument = L"{\"layer\":1}";
    view.job.startTime = L"2026-03-05T07:08:09Z";
    view.job.endTime = L"2026-03-05T07:08:10Z";
    view.progress = 100;
    EXPECT_EQ(front_end::JobsJson({view}),
              L"{\"version\":1,\"jobs\":[{\"number\":7,\"id\":\"id7\",\"status\":\"Success\",\"progress\":100,"
              L"\"message\":\"\","
              L"\"scenario\":\"Mesh report\",\"inputFiles\":[\"part.stl\"],\"runArgument\":\"{\\\"layer\\\":1}\","
              L"\"outputFolder\":\"\",\"workFolder\":\"\",\"startTime\":\"2026-03-05T07:08:09Z\","
              L"\"endTime\":\"2026-03-05T07:08:10Z\",\"messages\":[],\"outputFiles\":[]}]}\n");
}

TEST(JsonOutputTest, AScenarioSaysWhatItTakes) {
    ScenarioInfo scenario;
    scenario.id = L"mesh";
    scenario.displayName = L"Mesh \"report\"";
    scenario.path = L"mesh.adc";
    scenario.inputs = {{L"STL", {L"stl"}}};
    EXPECT_EQ(front_end::ScenariosJson({scenario}),
              L"{\"version\":1,\"scenarios\":[{\"id\":\"mesh\",\"name\":\"Mesh \\\"report\\\"\",\"path\":\"mesh.adc\","
              L"\"inputs\":[{\"cadName\":\"STL\",\"extensions\":[\"stl\"]}]}]}\n");
}

TEST(JsonOutputTest, ADeletedJobIsToldSo) {
    JobRow view;
    view.job.status = unlistedStatus;
    EXPECT_TRUE(Has(front_end::JobsJson({view}), L"\"status\":\"Deleted\""));
}

} // namespace

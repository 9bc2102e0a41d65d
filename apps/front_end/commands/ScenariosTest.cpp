#include "kit/front_end/CadjobsFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Messages.h"
#include "platform/files/NativePath.h"

namespace {

class ScenariosTest : public CadjobsFixture {
protected:
    void AnswerWith(const std::vector<ScenarioInfo>& scenarios) {
        host.answers[L"FetchScenariosRequest"] = {L"FetchScenariosResponse",
                                                  messages::Serialize(L"FetchScenariosResponse", scenarios)};
    }

    static ScenarioInfo Scenario() {
        return {
            L"1742", L"mesh.rb", L"mesh.rb", L"Mesh report", {{L"STL", {L"stl"}}, {L"STEP", {L"stp", L"step"}}, {}}};
    }
};

TEST_F(ScenariosTest, ShowsATable) {
    AnswerWith({Scenario()});
    EXPECT_EQ(Run({L"scenarios"}), 0);
    EXPECT_EQ(console.output, "Id    Scenario     Inputs                      File\n"
                              "1742  Mesh report  STL (stl), STEP (stp step)  mesh.rb\n");
}

TEST_F(ScenariosTest, AnEmptyCatalogueIsSaidSo) {
    AnswerWith({});
    EXPECT_EQ(Run({L"scenarios"}), 0);
    EXPECT_EQ(console.output, "There are no scenarios in the scenario directories of the settings.\n");
}

TEST_F(ScenariosTest, WhatIsBrokenIsSaidBesideTheTableAndByTheExitCode) {
    AnswerWith({Scenario()});
    host.firstAnswers[L"FetchScenariosRequest"] = {
        L"ScenarioProblems",
        ControllerCSWrapper::Serialize(L"ScenarioProblems",
                                       std::vector<std::wstring>{L"/s/a\x1b[2J.esa is broken.", L"Two."})};
    EXPECT_EQ(Run({L"scenarios"}), 1);
    EXPECT_EQ(console.output.find("Id    Scenario"), 0U);
    EXPECT_EQ(console.errors, "cadjobs: /s/a [2J.esa is broken.\ncadjobs: Two.\n");
    console.output.clear();
    EXPECT_EQ(Run({L"scenarios", L"--json"}), 1);
    EXPECT_EQ(console.output.find("{\"version\":1,\"scenarios\":[{"), 0U);
}

TEST_F(ScenariosTest, Json) {
    AnswerWith({Scenario()});
    EXPECT_EQ(Run({L"scenarios", L"--json"}), 0);
    EXPECT_EQ(console.output,
              R"({"version":1,"scenarios":[{"id":"1742","name":"Mesh report","path":"mesh.rb","inputs":[)"
              R"({"cadName":"STL","extensions":["stl"]},{"cadName":"STEP","extensions":["stp","step"]},)"
              R"({"cadName":"","extensions":[]}]}]})"
              "\n");
}

class ParameterSets : public CadjobsFixture {
protected:
    void AnswerWith(const std::vector<ScenarioParameterSetInfo>& sets) {
        host.answers[L"FetchScenarioParameterSetsRequest"] = {
            L"FetchScenarioParameterSetsResponse", messages::Serialize(L"FetchScenarioParameterSetsResponse", sets)};
    }

    static ScenarioParameterSetInfo Fine() {
        return {L"fine",
                L"Fine",
                L"small elements",
                {{L"size", L"integer", L"640", {L"320", L"640"}}, {L"title", L"", L"", {}}}};
    }
};
using ScenariosTest_ParameterSets = ParameterSets;

TEST_F(ScenariosTest_ParameterSets, ShowsEachParameter) {
    AnswerWith({Fine(), {L"raw", L"", L"", {}}});
    EXPECT_EQ(Run({L"parameters", L"1742"}), 0);
    EXPECT_EQ(console.output, "fine: Fine (small elements)\n"
                              "  size (integer) = 640 [320 | 640]\n"
                              "  title = \n"
                              "raw\n");
    EXPECT_EQ(host.Requests().back().payload, LR"({"FetchScenarioParameterSetsRequest":"1742"})");
}

TEST_F(ScenariosTest_ParameterSets, AScenarioHereIsNamedByItsPath) {
    AnswerWith({Fine()});
    const std::wstring scenario = directory / L"mesh.rb";
    WriteTextFile(scenario, "exit 0");
    EXPECT_EQ(Run({L"parameters", platform::ToNativeText(scenario)}), 0);
    EXPECT_EQ(host.Requests().back().payload, messages::Serialize(L"FetchScenarioParameterSetsRequest", scenario));
}

TEST_F(ScenariosTest_ParameterSets, NoneIsSaidSo) {
    AnswerWith({});
    EXPECT_EQ(Run({L"parameters", L"1742"}), 0);
    EXPECT_EQ(console.output, "The scenario has no parameter sets.\n");
}

TEST_F(ScenariosTest_ParameterSets, Json) {
    AnswerWith({Fine()});
    EXPECT_EQ(Run({L"parameters", L"1742", L"--json"}), 0);
    EXPECT_EQ(console.output,
              R"({"version":1,"parameterSets":[{"id":"fine","displayName":"Fine","description":"small elements",)"
              R"("parameters":[{"name":"size","type":"integer","defaultValue":"640","allowedValues":["320","640"]},)"
              R"({"name":"title","type":"","defaultValue":"","allowedValues":[]}]}]})"
              "\n");
}

} // namespace

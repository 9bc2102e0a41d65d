#include "kit/controller_host/AnswersFixture.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

using Texts = std::vector<std::wstring>;

/// Requests for scenarios or parameter sets report what is broken, and where.
class ScenarioProblemsTest : public AnswersFixture {
protected:
    Texts Problems() {
        Ask(L"FetchScenariosRequest");
        return Answered<Texts>(L"ScenarioProblems");
    }
    std::wstring Native(const std::wstring& name) const { return platform::ToNativeText(directory / name); }

    std::wstring MeshId() {
        Ask(L"FetchScenariosRequest");
        return Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse").at(0).id;
    }
    void AskForParameterSets(const std::wstring& id) {
        const std::wstring name = L"FetchScenarioParameterSetsRequest";
        Ask(name, messages::Serialize(name, id));
    }
};

TEST_F(ScenarioProblemsTest, NothingIsToldWhereAllIsWell) {
    WriteTextFile(directory / L"scenarios\\sub\\other.rb", "");
    Ask(L"FetchScenariosRequest");
    EXPECT_EQ(Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse").size(), 2U);
    EXPECT_FALSE(line.HasSent(L"ScenarioProblems"));
}

TEST_F(ScenarioProblemsTest, AMissingDirectoryIsNamedWithTheSystemsWord) {
    WriteTextFile(directory / L"settings.json",
                  R"({"version":1,"logFile":"","scenarioDirectories":[{"path":"missing"},{"path":"scenarios"}]})");
    const Texts problems = Problems();
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].find(L"The scenario directory " + Native(L"missing") + L" cannot be searched: "), 0U);
    EXPECT_EQ(Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse").size(), 1U);
}

TEST_F(ScenarioProblemsTest, ABrokenPackageIsNamedWithWhatIsWrong) {
    WriteTextFile(directory / L"scenarios\\sub\\broken.esa", "no package");
    const Texts problems = Problems();
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].find(L"The scenario package " + Native(L"scenarios\\sub\\broken.esa")), 0U)
        << problems.size();
    EXPECT_EQ(Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse").size(), 1U);
}

TEST_F(ScenarioProblemsTest, ABrokenDescriptionOfAScriptIsNamedWithItsPlace) {
    WriteTextFile(directory / L"scenarios\\mesh.scenario.json", "{\"version\":1,\n\"parameterSets\":5}");
    const Texts problems = Problems();
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].find(Native(L"scenarios\\mesh.scenario.json") + L", line 2"), 0U);
    EXPECT_EQ(Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse").size(), 1U);
}

TEST_F(ScenarioProblemsTest, OfVeryManyTheFirstAreToldAndTheRestCounted) {
    for (int i = 0; i < 103; ++i) {
        WriteTextFile(directory / (L"scenarios\\" + std::to_wstring(i) + L".esa"), "no package");
    }
    const Texts problems = Problems();
    ASSERT_EQ(problems.size(), 101U);
    EXPECT_EQ(problems.back(), L"3 more scenarios or directories are broken.");
}

TEST_F(ScenarioProblemsTest, ParameterSetsOfABrokenDescriptionAreRefusedWithTheReason) {
    const std::wstring id = MeshId();
    WriteTextFile(directory / L"scenarios\\mesh.scenario.json", "{\"version\":1,\n\"parameterSets\":5}");
    AskForParameterSets(id);
    const std::wstring refusal = Refusal();
    EXPECT_EQ(refusal.find(L"FetchScenarioParameterSetsRequest is refused: " +
                           Native(L"scenarios\\mesh.scenario.json") + L", line 2"),
              0U);
    EXPECT_NE(refusal.find(L"parameterSets"), std::wstring::npos);
    EXPECT_FALSE(line.HasSent(L"FetchScenarioParameterSetsResponse"));
}

TEST_F(ScenarioProblemsTest, ParameterSetsOfAScenarioThatIsGoneAreRefused) {
    const std::wstring id = MeshId();
    ASSERT_TRUE(platform::RemoveFile(directory / L"scenarios\\mesh.rb"));
    AskForParameterSets(id);
    EXPECT_EQ(Refusal(), L"FetchScenarioParameterSetsRequest is refused: The scenario file " +
                             Native(L"scenarios\\mesh.rb") + L" does not exist.");
}

} // namespace

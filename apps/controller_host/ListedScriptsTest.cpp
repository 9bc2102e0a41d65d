#include "kit/controller_host/AnswersFixture.h"

#include "kit/ZipWriter.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

#include <algorithm>

namespace {

using Texts = std::vector<std::wstring>;

/// Scripts in languages for which the settings name an interpreter are offered beside those of the engine's catalogue.
class ListedScriptsTest : public AnswersFixture {
protected:
    ListedScriptsTest() { UseInterpreters(R"(".py":["python3"])"); }

    void UseInterpreters(const std::string& commands) const {
        WriteTextFile(directory / L"settings.json",
                      R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json","logFile":"",)"
                      R"("scenarioDirectories":[{"path":"scenarios","label":"L"}],"interpreters":{)" +
                          commands + "}}");
    }

    std::vector<ScenarioInfo> Listed() {
        Ask(L"FetchScenariosRequest");
        return Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse");
    }

    Texts ListedNames() {
        Texts names;
        for (const ScenarioInfo& scenario : Listed()) {
            names.push_back(scenario.displayName);
        }
        return names;
    }

    /// The listed scenario with this name; an empty record if there is none.
    ScenarioInfo Scenario(const std::wstring& displayName) {
        const std::vector<ScenarioInfo> scenarios = Listed();
        const auto found = std::find_if(scenarios.begin(), scenarios.end(), [&](const ScenarioInfo& scenario) {
            return scenario.displayName == displayName;
        });
        return found == scenarios.end() ? ScenarioInfo() : *found;
    }

    ScenarioInfo ScenarioOfJob(const std::wstring& name) {
        const JobEnqueueResult result = Enqueued(RequestFor(name, {directory / L"part.stl"}));
        EXPECT_FALSE(result.jobIds.at(0).id.empty()) << "refused";
        const std::vector<JobListInfo> jobs = Jobs();
        return jobs.empty() ? ScenarioInfo() : jobs.back().scenario;
    }
};

TEST_F(ListedScriptsTest, AScriptIsListedAfterThoseOfTheCatalogue) {
    WriteTextFile(directory / L"scenarios\\deep\\count.py", "print(1)");
    EXPECT_EQ(ListedNames(), (Texts{L"L : mesh", L"L : count"}));
    const ScenarioInfo scenario = Scenario(L"L : count");
    EXPECT_EQ(scenario.path, directory / L"scenarios\\deep\\count.py");
    EXPECT_EQ(scenario.relativePath, L"deep\\count.py");
    EXPECT_EQ(scenario.inputs.size(), 1U);
}

TEST_F(ListedScriptsTest, ItsIdIsThatOfItsPathLikeThoseOfTheCatalogue) {
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    WriteTextFile(directory / L"scenarios\\count.rb", "puts 1");
    const std::vector<ScenarioInfo> first = Listed();
    ASSERT_EQ(first.size(), 3U);
    EXPECT_NE(first[0].id, first[2].id);
    EXPECT_EQ(first[2].id, Listed()[2].id);
}

TEST_F(ListedScriptsTest, ASettingsFileBesideItDescribesItsInputs) {
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    WriteTextFile(directory / L"scenarios\\count.adc", "[Scenario]\nCADName=STL\nCADExt=stl\nSecondInput=1\n");
    const ScenarioInfo scenario = Scenario(L"L : count");
    ASSERT_EQ(scenario.inputs.size(), 2U);
    EXPECT_EQ(scenario.inputs[0].cadName, L"STL");
}

TEST_F(ListedScriptsTest, AJobMayBeRequestedByItsIdItsNameAndItsPath) {
    WriteTextFile(directory / L"scenarios\\sub\\count.py", "print(1)");
    for (const std::wstring& name : {Scenario(L"L : count").id, std::wstring(L"count.py"),
                                     std::wstring(L"sub/count.py"), directory / L"scenarios\\sub\\count.py"}) {
        const ScenarioInfo scenario = ScenarioOfJob(name);
        EXPECT_EQ(scenario.displayName, L"L : count") << name.size();
        EXPECT_EQ(scenario.path, directory / L"scenarios\\sub\\count.py");
    }
}

TEST_F(ListedScriptsTest, AnIdIsKnownToAHostThatNobodyAskedForTheScenarios) {
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    const std::wstring id = Scenario(L"L : count").id;
    engine = std::make_unique<HostEngine>(functions.get());
    answers = std::make_unique<RequestHandler>(*engine, transmitter);
    EXPECT_EQ(ScenarioOfJob(id).displayName, L"L : count");
}

TEST_F(ListedScriptsTest, ItsParameterSetsAreThoseBesideIt) {
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    WriteTextFile(directory / L"scenarios\\count.scenario.json",
                  R"({"version":1,"parameterSets":[{"id":"fine","displayName":"Fine","parameters":[]}]})");
    const std::wstring name = L"FetchScenarioParameterSetsRequest";
    Ask(name, messages::Serialize(name, Scenario(L"L : count").id));
    const auto sets = Answered<std::vector<ScenarioParameterSetInfo>>(L"FetchScenarioParameterSetsResponse");
    ASSERT_EQ(sets.size(), 1U);
    EXPECT_EQ(sets[0].id, L"fine");
}

TEST_F(ListedScriptsTest, ParameterSetsAreThoseOfAnIdANameOrAPathAlsoAtFirstContact) {
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    WriteTextFile(directory / L"scenarios\\count.scenario.json",
                  R"({"version":1,"parameterSets":[{"id":"fine","displayName":"Fine","parameters":[]}]})");
    const std::wstring name = L"FetchScenarioParameterSetsRequest";
    for (const std::wstring& scenario :
         {Scenario(L"L : count").id, std::wstring(L"count.py"), directory / L"scenarios\\count.py"}) {
        engine = std::make_unique<HostEngine>(functions.get());
        answers = std::make_unique<RequestHandler>(*engine, transmitter);
        Ask(name, messages::Serialize(name, scenario));
        const auto sets = Answered<std::vector<ScenarioParameterSetInfo>>(L"FetchScenarioParameterSetsResponse");
        ASSERT_EQ(sets.size(), 1U) << scenario.size();
        EXPECT_EQ(sets[0].id, L"fine");
    }
}

TEST_F(ListedScriptsTest, ABrokenDescriptionBesideItIsReported) {
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    WriteTextFile(directory / L"scenarios\\count.scenario.json", "{");
    EXPECT_EQ(ListedNames(), (Texts{L"L : mesh", L"L : count"}));
    const Texts problems = Answered<Texts>(L"ScenarioProblems");
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_NE(problems[0].find(platform::ToNativeText(directory / L"scenarios\\count.scenario.json")),
              std::wstring::npos);
}

TEST_F(ListedScriptsTest, ScenariosOfTheCatalogueAreListedOnceWhateverTheSettingsName) {
    UseInterpreters(R"(".rb":["ruby"],".esa":["unzip"])");
    test_support::ZipEntry manifest;
    manifest.name = "manifest.json";
    manifest.content = R"({"version":1,"displayName":"Packaged","entryPoint":"m.py","interpreter":"python3"})";
    test_support::ZipEntry entryPoint;
    entryPoint.name = "m.py";
    WriteTextFile(directory / L"scenarios\\check.esa", test_support::MakeZip({manifest, entryPoint}));
    EXPECT_EQ(ListedNames(), (Texts{L"L : mesh", L"L : Packaged"}));
}

TEST_F(ListedScriptsTest, AScriptIsListedOnceHoweverTheSettingsSpellItsExtension) {
    UseInterpreters(R"(".PY":["python3"],".py":["python3"])");
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    EXPECT_EQ(Listed().size(), 2U);
}

TEST_F(ListedScriptsTest, AChangeOfTheSettingTakesEffectWithTheNextRequest) {
    WriteTextFile(directory / L"scenarios\\count.py", "print(1)");
    ASSERT_EQ(Listed().size(), 2U);
    UseInterpreters(R"(".lua":["lua"])");
    WriteTextFile(directory / L"scenarios\\count.lua", "print(1)");
    EXPECT_EQ(Scenario(L"L : count").path, directory / L"scenarios\\count.lua");
    EXPECT_EQ(Listed().size(), 2U);
}

} // namespace

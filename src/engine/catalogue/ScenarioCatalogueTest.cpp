#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/FunctionManager.h"
#include "engine/catalogue/ScenarioId.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingCompanion.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace {

using Texts = std::vector<std::wstring>;

class ScenarioCatalogueTest : public testing::Test {
protected:
    void Search(const std::wstring& label = L"") { companion.scenarioDirectories = {{directory.Path(), label}}; }
    void Write(const std::wstring& name, const std::string& content = "") { WriteTextFile(directory / name, content); }
    void Package(const std::wstring& name, const std::wstring& displayName) {
        Write(name);
        companion.packages[directory / name] = {L"ignored", L"ignored", L"ignored", displayName, {{L"STL", {L"stl"}}}};
    }

    std::vector<ScenarioInfo> Fetch() {
        std::vector<ScenarioInfo> scenarios;
        EXPECT_FALSE(engine.FetchScenarios(scenarios));
        return scenarios;
    }

    Texts FetchRelativePaths() {
        Texts paths;
        for (const ScenarioInfo& scenario : Fetch()) {
            paths.push_back(scenario.relativePath);
        }
        return paths;
    }

    RecordingCompanion companion;
    TemporaryDirectory directory;
    FunctionManager functions{{}};
    JobEntryManagerBase engine{&functions};
};

TEST_F(ScenarioCatalogueTest, WithoutDirectoriesNothingIsFound) {
    Write(L"x.rb");
    EXPECT_EQ(Fetch(), std::vector<ScenarioInfo>());
}

TEST_F(ScenarioCatalogueTest, FileInASubdirectoryOfASubdirectoryHasBothInItsRelativePath) {
    Search();
    Write(L"a\\b\\x.rb");
    const std::vector<ScenarioInfo> scenarios = Fetch();
    ASSERT_EQ(scenarios.size(), 1U);
    EXPECT_EQ(scenarios[0].relativePath, L"a\\b\\x.rb");
    EXPECT_EQ(scenarios[0].path, directory / L"a\\b\\x.rb");
}

TEST_F(ScenarioCatalogueTest, RootWithATrailingBackslashGetsNoSecondOne) {
    companion.scenarioDirectories = {{directory.Path() + L"\\", L""}};
    Write(L"a\\x.rb");
    const std::vector<ScenarioInfo> scenarios = Fetch();
    ASSERT_EQ(scenarios.size(), 1U);
    EXPECT_EQ(scenarios[0].path, directory / L"a\\x.rb");
}

TEST_F(ScenarioCatalogueTest, ScriptComesBeforeThePackageOfTheSameDirectory) {
    Search();
    Package(L"a.esa", L"A");
    Package(L"s.esa", L"S");
    Write(L"s.rb");
    EXPECT_EQ(FetchRelativePaths(), (Texts{L"s.rb", L"a.esa", L"s.esa"}));
}

TEST_F(ScenarioCatalogueTest, UpperDirectoriesComeFirst) {
    Search();
    Write(L"a\\deep\\1.rb");
    Write(L"a\\2.rb");
    Write(L"b\\3.rb");
    Write(L"4.rb");
    EXPECT_EQ(FetchRelativePaths(), (Texts{L"4.rb", L"a\\2.rb", L"b\\3.rb", L"a\\deep\\1.rb"}));
}

TEST_F(ScenarioCatalogueTest, DirectoriesAreSearchedInOrder) {
    companion.scenarioDirectories = {
        {directory / L"second", L""}, {directory / L"missing", L""}, {directory / L"first", L""}};
    Write(L"first\\1.rb");
    Write(L"second\\2.rb");
    EXPECT_EQ(FetchRelativePaths(), (Texts{L"2.rb", L"1.rb"}));
}

TEST_F(ScenarioCatalogueTest, OtherFilesAreNoScenarios) {
    Search();
    for (const wchar_t* name : {L"x.adc", L"x.txt", L"rb", L"x.rbx", L"x.rb.bak", L"xrb", L"x.py"}) {
        Write(name);
    }
    EXPECT_EQ(FetchRelativePaths(), Texts());
}

TEST_F(ScenarioCatalogueTest, DirectoryWithTheNameOfAScenarioIsListedToo) {
    Search();
    Write(L"x.rb\\y.rb");
    EXPECT_EQ(FetchRelativePaths(), (Texts{L"x.rb", L"x.rb\\y.rb"}));
}

TEST_F(ScenarioCatalogueTest, HiddenDirectoriesAreSearched) {
    Search();
    Write(L".hidden\\x.rb");
    EXPECT_EQ(FetchRelativePaths(), Texts{L".hidden\\x.rb"});
}

TEST_F(ScenarioCatalogueTest, ScriptWithoutSettingsHasOneUnnamedInput) {
    Search();
    Write(L"x.rb");
    Write(L"other.adc", "[Scenario]\nCADName=Neutral\n");
    EXPECT_EQ(Fetch().at(0).inputs, std::vector<InputFileSpec>(1));
}

TEST_F(ScenarioCatalogueTest, SettingsFileDescribesTheInputs) {
    Search();
    Write(L"x.rb");
    Write(L"x.adc", "[Scenario]\nCADName=Neutral\nCADExt=igs,stp\nSecondInput=2\n");
    const std::vector<InputFileSpec> expected{{L"Neutral", {L"igs", L"stp"}}, {}, {}};
    EXPECT_EQ(Fetch().at(0).inputs, expected);
}

TEST_F(ScenarioCatalogueTest, LabelStandsBeforeTheDisplayName) {
    Search(L"L");
    Write(L"x.rb");
    Package(L"y.esa", L"Package");
    const std::vector<ScenarioInfo> scenarios = Fetch();
    ASSERT_EQ(scenarios.size(), 2U);
    EXPECT_EQ(scenarios[0].displayName, L"L : x");
    EXPECT_EQ(scenarios[1].displayName, L"L : Package");
}

TEST_F(ScenarioCatalogueTest, WithoutALabelTheNameStandsAlone) {
    Search();
    Write(L"x.rb");
    Package(L"y.esa", L"Package");
    const std::vector<ScenarioInfo> scenarios = Fetch();
    EXPECT_EQ(scenarios.at(0).displayName, L"x");
    EXPECT_EQ(scenarios.at(1).displayName, L"Package");
}

TEST_F(ScenarioCatalogueTest, PackageKeepsTheInputsThatItNamesItself) {
    Search();
    Package(L"a\\y.esa", L"Package");
    const std::vector<ScenarioInfo> scenarios = Fetch();
    ASSERT_EQ(scenarios.size(), 1U);
    const std::wstring path = directory / L"a\\y.esa";
    EXPECT_EQ(scenarios[0], (ScenarioInfo{ScenarioId(path), L"a\\y.esa", path, L"Package", {{L"STL", {L"stl"}}}}));
}

TEST_F(ScenarioCatalogueTest, PackageThatIsNotUsableIsLeftOutSilently) {
    Search();
    Write(L"broken.esa");
    companion.Forget();
    EXPECT_EQ(FetchRelativePaths(), Texts());
    EXPECT_EQ(companion.Events(), Texts());
}

TEST_F(ScenarioCatalogueTest, IdentifierIsTheHashOfPrefixAndPath) {
    Search(L"L");
    Write(L"x.rb");
    EXPECT_EQ(Fetch().at(0).id, ScenarioId(L"L : " + (directory / L"x.rb")));
}

TEST_F(ScenarioCatalogueTest, SameFileUnderTwoLabelsHasTwoIdentifiers) {
    companion.scenarioDirectories = {{directory.Path(), L"A"}, {directory.Path(), L"B"}};
    Write(L"x.rb");
    const std::vector<ScenarioInfo> scenarios = Fetch();
    ASSERT_EQ(scenarios.size(), 2U);
    EXPECT_NE(scenarios[0].id, scenarios[1].id);
}

TEST_F(ScenarioCatalogueTest, FetchingTwiceGivesTheSameIdentifiersBehindWhatTheCallerHas) {
    Search();
    Write(L"x.rb");
    Package(L"y.esa", L"Package");
    std::vector<ScenarioInfo> scenarios = Fetch();
    const std::vector<ScenarioInfo> first = scenarios;
    engine.FetchScenarios(scenarios);
    ASSERT_EQ(scenarios.size(), 4U);
    EXPECT_TRUE(std::equal(first.begin(), first.end(), scenarios.begin()));
    EXPECT_TRUE(std::equal(first.begin(), first.end(), scenarios.begin() + 2));
}

TEST_F(ScenarioCatalogueTest, ChangeThatNeitherSizeNorTimeOfASettingsFileShowsIsFetched) {
    Search();
    Write(L"x.rb");
    const std::filesystem::path settings(text::ToUtf8(platform::ToNativeText(directory / L"x.adc")));
    Write(L"x.adc", "[Scenario]\nCADName=One\n");
    const auto time = std::filesystem::last_write_time(settings);
    EXPECT_EQ(Fetch().at(0).inputs.at(0).cadName, L"One");
    Write(L"x.adc", "[Scenario]\nCADName=Two\n");
    std::filesystem::last_write_time(settings, time);
    EXPECT_EQ(Fetch().at(0).inputs.at(0).cadName, L"Two");
    Write(L"other", "[Scenario]\nCADName=Six\n");
    std::filesystem::last_write_time(settings.parent_path() / "other", time - std::chrono::hours(1));
    ASSERT_TRUE(platform::RenameFile(directory / L"other", directory / L"x.adc"));
    EXPECT_EQ(Fetch().at(0).inputs.at(0).cadName, L"Six");
}

TEST_F(ScenarioCatalogueTest, ParameterSetsOfACataloguedScenarioAreAppended) {
    Search();
    Write(L"x.rb");
    companion.parameterSets[directory / L"x.rb"] = {{L"fine", L"Fine", L"", {}}};
    std::vector<ScenarioParameterSetInfo> sets(1);
    EXPECT_TRUE(engine.FetchScenarioParameterSets(sets, Fetch().at(0).id));
    ASSERT_EQ(sets.size(), 2U);
    EXPECT_EQ(sets[1].id, L"fine");
}

TEST_F(ScenarioCatalogueTest, ScenarioThatOffersNoParameterSetsIsASuccess) {
    Search();
    Write(L"x.rb");
    std::vector<ScenarioParameterSetInfo> sets;
    EXPECT_TRUE(engine.FetchScenarioParameterSets(sets, Fetch().at(0).id));
    EXPECT_TRUE(sets.empty());
}

TEST_F(ScenarioCatalogueTest, UnknownIdentifierHasNoParameterSets) {
    companion.parameterSets[L""] = {{L"fine", L"Fine", L"", {}}};
    std::vector<ScenarioParameterSetInfo> sets;
    EXPECT_FALSE(engine.FetchScenarioParameterSets(sets, L"12345"));
    EXPECT_TRUE(sets.empty());
}

TEST_F(ScenarioCatalogueTest, CatalogueKeepsScenariosThatALaterFetchDoesNotFind) {
    Search();
    Write(L"x.rb");
    const std::wstring id = Fetch().at(0).id;
    companion.scenarioDirectories.clear();
    EXPECT_TRUE(Fetch().empty());
    std::vector<ScenarioParameterSetInfo> sets;
    EXPECT_TRUE(engine.FetchScenarioParameterSets(sets, id));
}

TEST_F(ScenarioCatalogueTest, ElementsThatTheCallerPutThereAreCataloguedToo) {
    std::vector<ScenarioInfo> scenarios{{L"own", L"", L"first", L"", {}}, {L"own", L"", L"second", L"", {}}};
    companion.parameterSets[L"second"] = {{L"fine", L"Fine", L"", {}}};
    engine.FetchScenarios(scenarios);
    std::vector<ScenarioParameterSetInfo> sets;
    EXPECT_TRUE(engine.FetchScenarioParameterSets(sets, L"own"));
    EXPECT_EQ(sets.size(), 1U);
}

TEST_F(ScenarioCatalogueTest, EnqueueFindsAScenarioByItsIdentifier) {
    Search(L"L");
    Write(L"sub\\x.rb");
    Write(L"a.stl");
    EnqueueJobsInfo request;
    request.scenario.id = Fetch().at(0).id;
    request.inputFileSets = {{directory / L"a.stl"}};
    request.outputDir = directory / L"out";
    JobEnqueueResult result;
    EXPECT_TRUE(engine.EnqueueJob(request, result));
    std::vector<JobListInfo> jobs;
    engine.GetJobList(jobs);
    EXPECT_EQ(jobs.at(0).scenario.displayName, L"L : x");
    EXPECT_EQ(jobs.at(0).scenario.relativePath, L"sub\\x.rb");
}

} // namespace

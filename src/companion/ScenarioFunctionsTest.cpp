#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "formats/ScenarioManifest.h"
#include "kit/TemporaryDirectory.h"
#include "kit/ZipWriter.h"

using test_support::MakeZip;
using test_support::ZipEntry;

namespace {

constexpr auto manifest = R"({"displayName":"Hollow check","inputs":[{"cadName":"STL","extensions":["stl"]}],
    "entryPoint":"main.rb","interpreter":"ruby","parameterSets":[{"id":"all"},{"id":"large"}]})";

ZipEntry File(const std::string& name, const std::string& content) {
    ZipEntry entry;
    entry.name = name;
    entry.content = content;
    return entry;
}

class ScenarioFunctionsTest : public testing::Test {
protected:
    ScenarioFunctionsTest() { ControllerCSWrapper::ChangeLogFilePath(directory / L"controller.log"); }
    ~ScenarioFunctionsTest() override { ControllerCSWrapper::ChangeLogFilePath(L""); }

    std::wstring Write(const std::wstring& name, const std::string& content) const {
        WriteTextFile(directory / name, content);
        return directory / name;
    }

    std::string Log() const { return ReadTextFile(directory / L"controller.log"); }

    /// Expects exactly one line, a warning that contains `part`.
    void ExpectOneWarning(const std::string& part) const {
        const std::string log = Log();
        EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
        EXPECT_NE(log.find("Z warning "), std::string::npos) << log;
        EXPECT_NE(log.find(part), std::string::npos) << log;
    }

    const TemporaryDirectory directory;
};

} // namespace

TEST_F(ScenarioFunctionsTest, ReadsNameAndInputsOfAPackage) {
    const std::wstring path = Write(L"hollow.esa", MakeZip({File("manifest.json", manifest), File("main.rb", "")}));
    ScenarioInfo info;
    info.id = L"17";
    info.path = L"as before";
    ASSERT_TRUE(ControllerCSWrapper::GetScenarioInfo(path, info));
    EXPECT_EQ(info, (ScenarioInfo{L"17", L"", L"as before", L"Hollow check", {{L"STL", {L"stl"}}}}));
}

TEST_F(ScenarioFunctionsTest, AppendsTheParameterSetsOfAPackage) {
    const std::wstring path = Write(L"hollow.esa", MakeZip({File("manifest.json", manifest), File("main.rb", "")}));
    std::vector<ScenarioParameterSetInfo> sets = {{L"first", L"", L"", {}}};
    ASSERT_TRUE(ControllerCSWrapper::GetScenarioParameterSetInfo(path, sets));
    ASSERT_EQ(sets.size(), 3u);
    EXPECT_EQ(sets[0].id, L"first");
    EXPECT_EQ(sets[2].id, L"large");
}

TEST_F(ScenarioFunctionsTest, AppendsTheParameterSetsBesideAScript) {
    Write(L"mesh.report.scenario.json", R"({"parameterSets":[{"id":"fine"}]})");
    std::vector<ScenarioParameterSetInfo> sets;
    ASSERT_TRUE(ControllerCSWrapper::GetScenarioParameterSetInfo(Write(L"mesh.report.rb", ""), sets));
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].id, L"fine");
}

TEST_F(ScenarioFunctionsTest, TakesAScriptWithoutADescription) {
    std::vector<ScenarioParameterSetInfo> sets;
    EXPECT_TRUE(ControllerCSWrapper::GetScenarioParameterSetInfo(Write(L"plain.rb", ""), sets));
    EXPECT_TRUE(sets.empty());
}

TEST_F(ScenarioFunctionsTest, RefusesABrokenDescriptionAndSaysWhere) {
    Write(L"a.scenario.json", "{\n\"timeLimitSeconds\":-1}");
    std::vector<ScenarioParameterSetInfo> sets;
    EXPECT_FALSE(ControllerCSWrapper::GetScenarioParameterSetInfo(Write(L"a.rb", ""), sets));
    EXPECT_TRUE(sets.empty());
    ExpectOneWarning("a.scenario.json, line 2, column 20: timeLimitSeconds: expected");
}

TEST_F(ScenarioFunctionsTest, RefusesAPackageWithoutAManifest) {
    ScenarioInfo info;
    EXPECT_FALSE(ControllerCSWrapper::GetScenarioInfo(Write(L"a.esa", MakeZip({File("main.rb", "")})), info));
    EXPECT_EQ(info, ScenarioInfo());
    ExpectOneWarning("has no file \"manifest.json\"");
}

TEST_F(ScenarioFunctionsTest, RefusesAPackageWithABrokenManifest) {
    ScenarioInfo info;
    EXPECT_FALSE(ControllerCSWrapper::GetScenarioInfo(Write(L"a.esa", MakeZip({File("manifest.json", "{")})), info));
    ExpectOneWarning("a.esa: manifest.json, line 1, column 2: not JSON");
}

TEST_F(ScenarioFunctionsTest, RefusesAPackageWithoutItsEntryPoint) {
    ScenarioInfo info;
    EXPECT_FALSE(
        ControllerCSWrapper::GetScenarioInfo(Write(L"a.esa", MakeZip({File("manifest.json", manifest)})), info));
    ExpectOneWarning("manifest.json, the package has no file \"main.rb\"");
}

TEST_F(ScenarioFunctionsTest, RefusesWhatIsNoPackage) {
    ScenarioInfo info;
    EXPECT_FALSE(ControllerCSWrapper::GetScenarioInfo(Write(L"a.esa", "text"), info));
    ExpectOneWarning("a.esa is not a ZIP file");
}

TEST_F(ScenarioFunctionsTest, TellsPackagesByTheirExtension) {
    EXPECT_TRUE(scenario_manifest::IsPackage(L"C:\\s\\a.esa"));
    EXPECT_FALSE(scenario_manifest::IsPackage(L"C:\\s\\a.rb"));
    EXPECT_FALSE(scenario_manifest::IsPackage(L"C:\\s.esa\\a"));
}

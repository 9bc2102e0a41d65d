#include "scenario_runner/ScenarioCommand.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "platform/files/NativePath.h"

using scenario_runner::ChooseCommand;
using scenario_runner::ScenarioCommand;
using scenario_runner::ScenarioEnvironment;
using scenario_runner::ScenarioPaths;
using Words = std::vector<std::wstring>;

namespace {

/// An absolute path on either system.
std::wstring Absolute(const std::wstring& path) {
    static const std::wstring root = platform::IsAbsolute(L"C:\\x") ? L"C:" : L"";
    return root + path;
}

std::wstring Native(const std::wstring& path) {
    return platform::ToNativeText(Absolute(path));
}

class ScenarioCommandTest : public testing::Test {
protected:
    ScenarioCommandTest() {
        settings.file = Absolute(L"\\etc\\settings.json");
        settings.interpreters = {{L".rb", {L"ruby", L"--disable=gems"}}};
        settings.scenarioApiDirectory = Absolute(L"\\api");
        paths.scenarioPath = Absolute(L"\\s\\mesh_report.rb");
        paths.runInfoPath = L"run_info_path";
    }

    bool Choose() {
        const ScenarioEnvironment machine{
            [this](const std::wstring& name) {
                return programs.contains(name) ? std::optional(programs.at(name)) : std::nullopt;
            },
            [this](const std::wstring& path) { return std::count(missing.begin(), missing.end(), path) == 0; },
            [this](const std::wstring& name) {
                return environment.contains(name) ? std::optional(environment.at(name)) : std::nullopt;
            }};
        return ChooseCommand(settings, manifest, paths, machine, command, problem);
    }

    std::optional<std::wstring> Variable(const std::wstring& name) const {
        for (const auto& [variable, value] : command.environment) {
            if (variable == name) {
                return value;
            }
        }
        return std::nullopt;
    }

    void UsePython() {
        settings.interpreters[L".py"] = {L"python3"};
        paths.scenarioPath = Absolute(L"\\s\\x.py");
    }

    void UsePackage() {
        paths.scenarioPath = Absolute(L"\\s\\check.esa");
        paths.packageDirectory = Absolute(L"\\w\\1\\package");
    }

    settings::Settings settings;
    scenario_manifest::ScenarioManifest manifest;
    ScenarioPaths paths;
    std::map<std::wstring, std::wstring> programs = {
        {L"ruby", L"ruby_path"}, {L"python3", L"python_path"}, {L"lua", L"lua_path"}};
    std::map<std::wstring, std::wstring> environment;
    Words missing;
    ScenarioCommand command;
    std::wstring problem;
};

} // namespace

TEST_F(ScenarioCommandTest, AScriptRunsWithTheInterpreterOfItsExtension) {
    ASSERT_TRUE(Choose()) << problem.size();
    EXPECT_EQ(command.program, L"ruby_path");
    EXPECT_EQ(command.arguments, (Words{L"--disable=gems", Native(L"\\s\\mesh_report.rb"), L"run_info_path"}));
    EXPECT_EQ(Variable(L"CONTROLLER_RUN_INFO"), L"run_info_path");
}

TEST_F(ScenarioCommandTest, RubyFindsTheScenarioApiFirst) {
    ASSERT_TRUE(Choose());
    EXPECT_EQ(Variable(L"RUBYLIB"), Native(L"\\api\\ruby"));
    command = {};
    environment[L"RUBYLIB"] = L"mine";
    ASSERT_TRUE(Choose());
    EXPECT_EQ(Variable(L"RUBYLIB"), Native(L"\\api\\ruby") + platform::pathListSeparator + L"mine");
}

TEST_F(ScenarioCommandTest, AScenarioApiThatIsNotThereIsNamed) {
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.apiProblem, L"");
    missing = {Absolute(L"\\api\\ruby\\controller_scenario.rb")};
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.apiProblem, L"The scenario API for Ruby was not found: there is no file " +
                                      Native(L"\\api\\ruby\\controller_scenario.rb") +
                                      L"; name its folder as \"scenarioApiDirectory\" in " +
                                      Native(L"\\etc\\settings.json") + L".");
}

TEST_F(ScenarioCommandTest, TheApiForPythonIsNamedWhereItIsNotThere) {
    UsePython();
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.apiProblem, L"");
    missing = {Absolute(L"\\api\\python\\controller_scenario\\__init__.py")};
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.apiProblem, L"The scenario API for Python was not found: there is no file " +
                                      Native(L"\\api\\python\\controller_scenario\\__init__.py") +
                                      L"; name its folder as \"scenarioApiDirectory\" in " +
                                      Native(L"\\etc\\settings.json") + L".");
}

TEST_F(ScenarioCommandTest, PythonFindsTheScenarioApiFirst) {
    UsePython();
    ASSERT_TRUE(Choose());
    EXPECT_EQ(Variable(L"PYTHONPATH"), Native(L"\\api\\python"));
    EXPECT_EQ(Variable(L"RUBYLIB"), std::nullopt);
    command = {};
    environment[L"PYTHONPATH"] = L"mine";
    ASSERT_TRUE(Choose());
    EXPECT_EQ(Variable(L"PYTHONPATH"), Native(L"\\api\\python") + platform::pathListSeparator + L"mine");
}

TEST_F(ScenarioCommandTest, PythonUsesUtf8AndNoBuffersUnlessTheUserSaysOtherwise) {
    UsePython();
    environment[L"PYTHONUNBUFFERED"] = L"";
    ASSERT_TRUE(Choose());
    EXPECT_EQ(Variable(L"PYTHONUTF8"), L"1");
    EXPECT_EQ(Variable(L"PYTHONUNBUFFERED"), L"1");
    command = {};
    environment[L"PYTHONUTF8"] = L"0";
    ASSERT_TRUE(Choose());
    EXPECT_EQ(Variable(L"PYTHONUTF8"), std::nullopt);
    EXPECT_EQ(Variable(L"PYTHONUNBUFFERED"), L"1");
}

TEST_F(ScenarioCommandTest, OtherLanguagesKeepTheUsersEnvironment) {
    settings.interpreters[L".lua"] = {L"lua"};
    paths.scenarioPath = Absolute(L"\\s\\x.lua");
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.program, L"lua_path");
    EXPECT_EQ(command.apiProblem, L"");
    EXPECT_EQ(command.environment.size(), 1U);
}

TEST_F(ScenarioCommandTest, AnUnknownExtensionIsRefused) {
    paths.scenarioPath = Absolute(L"\\s\\x.py");
    EXPECT_FALSE(Choose());
    EXPECT_EQ(problem, L"No interpreter is known for " + Native(L"\\s\\x.py") +
                           L": add one for \".py\" to \"interpreters\" in " + Native(L"\\etc\\settings.json") + L".");
}

TEST_F(ScenarioCommandTest, AMissingInterpreterIsRefused) {
    programs.clear();
    EXPECT_FALSE(Choose());
    EXPECT_EQ(problem, L"The interpreter \"ruby\" for " + Native(L"\\s\\mesh_report.rb") +
                           L" was not found: install it, or name its program under \"interpreters\" in " +
                           Native(L"\\etc\\settings.json") + L".");
}

TEST_F(ScenarioCommandTest, AMissingScriptIsRefused) {
    missing = {paths.scenarioPath};
    EXPECT_FALSE(Choose());
    EXPECT_EQ(problem, L"The scenario " + Native(L"\\s\\mesh_report.rb") + L" does not exist any more.");
}

TEST_F(ScenarioCommandTest, APackagedScriptRunsWithTheInterpreterOfTheSettings) {
    UsePackage();
    manifest.entryPoint = L"lib/main.rb";
    manifest.interpreter = L"ruby";
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.program, L"ruby_path");
    EXPECT_EQ(command.arguments,
              (Words{L"--disable=gems", Native(L"\\w\\1\\package\\lib\\main.rb"), L"run_info_path"}));
    EXPECT_NE(Variable(L"RUBYLIB"), std::nullopt);
}

TEST_F(ScenarioCommandTest, ThatInterpreterMayStandAnywhere) {
    UsePackage();
    manifest.entryPoint = L"main.rb";
    manifest.interpreter = L"ruby";
    const std::wstring path = Absolute(L"\\opt\\ruby") + platform::programExtension;
    settings.interpreters = {{L".rb", {path}}};
    programs[path] = path;
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.program, path);
}

TEST_F(ScenarioCommandTest, AnInterpreterThatTheSettingsDoNotNameIsLookedUp) {
    UsePackage();
    manifest.entryPoint = L"main.py";
    manifest.interpreter = L"python3";
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.program, L"python_path");
    EXPECT_EQ(command.arguments, (Words{Native(L"\\w\\1\\package\\main.py"), L"run_info_path"}));
}

TEST_F(ScenarioCommandTest, APackagedProgramRunsItself) {
    UsePackage();
    manifest.executable = L"bin/check.exe";
    const std::wstring path = Absolute(L"\\w\\1\\package\\bin\\check.exe");
    programs[path] = path;
    ASSERT_TRUE(Choose());
    EXPECT_EQ(command.program, path);
    EXPECT_EQ(command.arguments, Words{L"run_info_path"});
}

TEST_F(ScenarioCommandTest, APackagedProgramThatTheSystemCannotRunIsRefused) {
    UsePackage();
    manifest.executable = L"bin/check";
    EXPECT_FALSE(Choose());
    EXPECT_EQ(problem, L"The package " + Native(L"\\s\\check.esa") +
                           L" names \"bin/check\" as its program, which this system cannot run.");
}

TEST_F(ScenarioCommandTest, NothingOutsideThePackageIsRun) {
    UsePackage();
    manifest.interpreter = L"ruby";
    for (const wchar_t* const name : {L"../other.rb", L"a/../../other.rb", L"../package_2/x.rb", L""}) {
        manifest.entryPoint = name;
        EXPECT_FALSE(Choose());
    }
    manifest.entryPoint = L"";
    manifest.executable = L"../x.exe";
    EXPECT_FALSE(Choose());
}

TEST_F(ScenarioCommandTest, AFileThatThePackageLacksIsRefused) {
    UsePackage();
    manifest.entryPoint = L"main.rb";
    manifest.interpreter = L"ruby";
    missing = {Absolute(L"\\w\\1\\package\\main.rb")};
    EXPECT_FALSE(Choose());
    EXPECT_EQ(problem, L"The package " + Native(L"\\s\\check.esa") +
                           L" names \"main.rb\" in its manifest, but holds no such file.");
}

#include "modules/StartChecks.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "kit/modules/ModuleFiles.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

using Texts = std::vector<std::wstring>;

class StartChecksTest : public testing::Test {
protected:
    StartChecksTest() {
        settings.functionModules = {test_modules::ModulePath(L"recording_module_a")};
        settings.eventTransmitter = test_modules::ModulePath(L"transmitter_by_address");
        settings.scenarioRunner = test_support::ProgramPath(L"test_process");
    }

    static bool Names(const Texts& problems, const Texts& parts) {
        return std::any_of(problems.begin(), problems.end(), [&parts](const std::wstring& problem) {
            return std::all_of(parts.begin(), parts.end(), [&problem](const std::wstring& part) {
                return problem.find(part) != std::wstring::npos;
            });
        });
    }
    static std::string Joined(const Texts& problems) {
        std::wstring text;
        for (const std::wstring& problem : problems) {
            text += problem + L"\n";
        }
        return text::ToUtf8(text);
    }

    const TemporaryDirectory directory;
    settings::Settings settings;
};

TEST_F(StartChecksTest, SettingsThatAreRightHaveNoProblems) {
    EXPECT_EQ(start_checks::Problems(settings), Texts());
}

TEST_F(StartChecksTest, AMissingModuleIsNamed) {
    settings.functionModules = {directory / L"missing.so"};
    const Texts problems = start_checks::Problems(settings);
    EXPECT_TRUE(Names(
        problems, {L"The function module " + platform::ToNativeText(directory / L"missing.so") + L" cannot be loaded: ",
                   L"Check the setting \"functionModules\"."}))
        << Joined(problems);
    EXPECT_TRUE(Names(problems, {L"No function module offers \"RunScenario\""})) << Joined(problems);
}

TEST_F(StartChecksTest, AModuleWithoutItsExportsIsNamed) {
    settings.functionModules = {test_modules::ModulePath(L"module_without_get_functions"),
                                test_modules::ModulePath(L"module_without_call_function")};
    const Texts problems = start_checks::Problems(settings);
    EXPECT_TRUE(Names(problems, {L"module_without_get_functions", L"has no export \"GetFunctions\"."}))
        << Joined(problems);
    EXPECT_TRUE(Names(problems, {L"module_without_call_function", L"has no export \"CallFunction\"."}))
        << Joined(problems);
}

TEST_F(StartChecksTest, AMissingRunnerIsNamed) {
    settings.scenarioRunner = directory / L"runner";
    EXPECT_TRUE(
        Names(start_checks::Problems(settings), {platform::ToNativeText(directory / L"runner"), L"scenarioRunner"}));
}

TEST_F(StartChecksTest, AnInterpreterThatIsNotInPathIsNamed) {
    settings.interpreters = {{L".xyz", {L"no_such_interpreter"}}};
    settings.hooks.queueEmpty = {L"no_such_hook"};
    EXPECT_TRUE(
        Names(start_checks::Problems(settings), {L"\"no_such_interpreter\" of .xyz scenarios", L"\"interpreters\""}));
    EXPECT_TRUE(
        Names(start_checks::Problems(settings), {L"\"no_such_hook\" of the hook \"queueEmpty\"", L"\"hooks\""}));
}

TEST_F(StartChecksTest, AnInterpreterThatCannotBeRunIsNamed) {
    settings.interpreters = {{L".xyz", {directory.Path()}}, {L".rb", {test_support::ProgramPath(L"test_process")}}};
    settings.hooks.jobEnded = {test_support::ProgramPath(L"test_process"), L"exit", L"0"};
    const Texts problems = start_checks::Problems(settings);
    EXPECT_EQ(problems.size(), 1U) << Joined(problems);
    EXPECT_TRUE(Names(problems, {directory.Path(), L".xyz"}));
}

TEST_F(StartChecksTest, ATransmitterThatCannotBeLoadedIsNamedWithTheSystemsWord) {
    settings.eventTransmitter = directory / L"line.so";
    EXPECT_TRUE(
        Names({start_checks::TransmitterProblem(settings)},
              {L"the event transmitter " + platform::ToNativeText(directory / L"line.so") + L" cannot be loaded: ",
               L"Check the setting \"eventTransmitter\"."}));
}

TEST_F(StartChecksTest, ATransmitterModuleWithoutItsExportIsNamed) {
    settings.eventTransmitter = test_modules::ModulePath(L"recording_module_a");
    EXPECT_TRUE(Names({start_checks::TransmitterProblem(settings)}, {L"has no export \"GetEventTransmitter\"."}));
}

TEST_F(StartChecksTest, ATransmitterThatIsThereIsNotBlamedForItsModule) {
    EXPECT_TRUE(Names({start_checks::TransmitterProblem(settings)}, {L"another host has the name"}));
}

} // namespace

#include "CommonControllerLib/FunctionManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <gtest/gtest.h>

/// The function modules in examples/function_modules, in C++ and in C, called like by the host.
namespace {

class ExampleModulesTest : public testing::TestWithParam<const char*> {
protected:
    /// The result of "RunScenario" for a scenario file; `answer` receives the module's answer.
    long RunScenario(const std::wstring& scenario) {
        std::wstring request;
        EXPECT_TRUE(ControllerCSWrapper::CreateRunScenarioInfoString(L"a1", scenario, {}, directory / L"out",
                                                                     directory / L"work\\a1", L"", request));
        return functions.CallFunction("RunScenario", request, answer, nullptr);
    }

    const TemporaryDirectory directory;
    const FunctionManager functions{
        {platform::ProgramDirectory() + L"\\" + text::FromUtf8(GetParam()) + platform::moduleExtension}};
    std::wstring answer;
};

TEST_P(ExampleModulesTest, TheAnswerNamesTheProcessThatWasStarted) {
    ASSERT_EQ(RunScenario(test_support::ProgramPath(L"test_process")), 0) << text::ToUtf8(answer);
    void* process = nullptr;
    ASSERT_TRUE(ControllerCSWrapper::Deserialize(answer, process)) << text::ToUtf8(answer);
    const platform::OwnedHandle owned(process);
    EXPECT_TRUE(test_support::WaitUntilSignalled(process));
    // The path of the run request is not one of its commands.
    EXPECT_EQ(platform::ExitCode(process), 99);
    EXPECT_NE(ReadTextFile(directory / L"work\\a1\\run_scenario_info.json").find("\"jobId\":\"a1\""),
              std::string::npos);
}

TEST_P(ExampleModulesTest, AProgramThatIsMissingIsNamed) {
    EXPECT_NE(RunScenario(directory / L"missing.exe"), 0);
    const std::wstring start =
        L"The program " + platform::ToNativeText(directory / L"missing.exe") + L" cannot be started: ";
    EXPECT_EQ(answer.substr(0, start.size()), start);
}

TEST_P(ExampleModulesTest, ARequestThatCannotBeReadIsRefusedWithAReason) {
    EXPECT_NE(functions.CallFunction("RunScenario", L"no request", answer, nullptr), 0);
    EXPECT_FALSE(answer.empty());
}

INSTANTIATE_TEST_SUITE_P(Modules, ExampleModulesTest, testing::Values("cpp_example_module", "c_example_module"));

} // namespace

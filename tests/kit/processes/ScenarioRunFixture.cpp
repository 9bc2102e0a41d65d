#include "kit/processes/ScenarioRunFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/TestProcess.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/system/Environment.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace {

/// A JSON text. Paths are written with slashes, which both systems accept.
std::string Quoted(const std::wstring& path) {
    std::string quoted = "\"";
    for (const char byte : text::ToUtf8(path)) {
        quoted += byte == '\\' ? '/' : byte;
    }
    return quoted + '"';
}

} // namespace

ScenarioRunFixture::ScenarioRunFixture() : pathBefore(platform::GetEnvironment(L"PATH").value_or(L"")) {
    // The directory where a packaged program finds the libraries of this build.
    platform::SetEnvironment(L"PATH", pathBefore + platform::pathListSeparator +
                                          platform::ToNativeText(platform::ProgramDirectory()));
    settings.runner = test_support::ProgramPath(L"scenario_runner");
    settings.apiDirectory = SCENARIO_API_DIRECTORY;
    settings.stepsInterpreter = test_support::ProgramPath(L"test_scenario");
    job.jobId = L"3f9a0c1";
    job.workDir = directory / L"work\\3f9a0c1";
    job.outputFolder = directory / L"out";
}

ScenarioRunFixture::~ScenarioRunFixture() {
    if (platform::IsProcessRunning(runner.Get())) {
        RequestStop();
        AwaitEnd();
    }
    settings::UseFile(L"");
    platform::SetEnvironment(L"PATH", pathBefore);
}

std::wstring ScenarioRunFixture::ModulePath(const std::wstring& name) {
    return platform::ResolveAgainst(platform::ProgramDirectory(), name + platform::moduleExtension);
}

void ScenarioRunFixture::UseSteps(const std::string& steps) {
    UseScenario(L"scenario.steps", steps);
}

void ScenarioRunFixture::UseScenario(const std::wstring& name, const std::string& content) {
    job.scenarioPath = directory / name;
    WriteTextFile(job.scenarioPath, content);
}

void ScenarioRunFixture::WriteSettings() {
    WriteTextFile(
        directory / L"settings.json",
        "{\"version\":1,\"workDirectory\":\"work\",\"scenarioRunner\":" + Quoted(settings.runner) +
            ",\"scenarioApiDirectory\":" + Quoted(settings.apiDirectory) +
            ",\"interpreters\":{\".rb\":[\"ruby\",\"--disable=gems\"],\".py\":[\"/usr/bin/python3\"],\".steps\":[" +
            Quoted(settings.stepsInterpreter) + "]},\"cancelGraceSeconds\":" + std::to_string(settings.graceSeconds) +
            ",\"scenarioLogLimitBytes\":" + std::to_string(settings.logLimitBytes) + settings.members + "}");
    settings::UseFile(directory / L"settings.json");
    ASSERT_EQ(settings::Problem(), L"");
}

long ScenarioRunFixture::Call(const std::string& function, const std::wstring& input) {
    if (!functions) {
        functions = std::make_unique<FunctionManager>(std::vector{settings.module});
    }
    std::wstring output;
    const long result = functions->CallFunction(function, input, output, nullptr);
    void* handle = nullptr;
    if (ControllerCSWrapper::Deserialize(output, handle)) {
        runner = platform::OwnedHandle(handle);
    }
    return result;
}

long ScenarioRunFixture::Start() {
    WriteSettings();
    return Call("RunScenario", run_protocol::SerializeRunScenarioInfo(job));
}

void ScenarioRunFixture::StartAndAwaitReady(const std::string& steps) {
    UseSteps(steps);
    ASSERT_EQ(Start(), 0);
    AwaitFile(job.workDir, L"ready");
}

std::int32_t ScenarioRunFixture::AwaitEnd() {
    EXPECT_TRUE(test_support::WaitUntilSignalled(runner.Get()));
    return platform::ExitCode(runner.Get()).value_or(-1);
}

void ScenarioRunFixture::Run(const std::string& steps, std::int32_t exitCode) {
    UseSteps(steps);
    ASSERT_EQ(Start(), 0);
    ASSERT_EQ(AwaitEnd(), exitCode);
}

void ScenarioRunFixture::RequestStop() {
    EXPECT_TRUE(platform::CreateEmptyFile(InWorkDir(run_protocol::killFileName)));
}

std::wstring ScenarioRunFixture::InWorkDir(const std::wstring& name) const {
    return platform::ResolveAgainst(job.workDir, name);
}

std::string ScenarioRunFixture::Log() const {
    return ReadTextFile(InWorkDir(run_protocol::logFileName));
}

run_protocol::RunScenarioResult ScenarioRunFixture::Result() const {
    run_protocol::RunScenarioResult result;
    EXPECT_TRUE(ControllerCSWrapper::ParseRunScenarioResult(InWorkDir(run_protocol::resultFileName), result.succeeded,
                                                            result.messages, result.outputFiles));
    return result;
}

std::wstring ScenarioRunFixture::FirstMessage() const {
    const run_protocol::RunScenarioResult result = Result();
    return result.messages.empty() ? L"" : result.messages.front().second;
}

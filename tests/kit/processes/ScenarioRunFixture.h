#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "CommonControllerLib/FunctionManager.h"
#include "formats/RunProtocol.h"
#include "kit/TemporaryDirectory.h"
#include "platform/system/OwnedHandle.h"

/// A function module and settings in a temporary directory, and one job. The program test_scenario runs scripts with
/// the extension ".steps".
class ScenarioRunFixture : public testing::Test {
protected:
    ScenarioRunFixture();
    ~ScenarioRunFixture() override;

    /// Settings; change them before `Start`.
    struct Settings {
        std::wstring runner;
        int graceSeconds = 600;
        int logLimitBytes = 1 << 20;
        std::wstring stepsInterpreter;
        std::wstring apiDirectory;
        /// The function module under test.
        std::wstring module = ModulePath(L"local_process");
        /// Further members, each with a comma in front.
        std::string members;
    };

    /// Writes the scenario file and selects it for the job.
    void UseSteps(const std::string& steps);
    void UseScenario(const std::wstring& name, const std::string& content);
    void WriteSettings();
    /// The result of the function; on success `runner` is the job's runner.
    [[nodiscard]] long Start();
    /// `UseSteps` and `Start`; returns when the scenario has reached its step "be ready".
    void StartAndAwaitReady(const std::string& steps);
    /// Waits until the runner has ended, and returns its exit code.
    std::int32_t AwaitEnd();
    /// `UseSteps`, `Start` and `AwaitEnd`; checks that the start succeeded and the exit code of the runner.
    void Run(const std::string& steps, std::int32_t exitCode = 0);

    [[nodiscard]] long Call(const std::string& function, const std::wstring& input);
    void RequestStop();
    std::wstring InWorkDir(const std::wstring& name) const;
    std::string Log() const;
    run_protocol::RunScenarioResult Result() const;
    std::wstring FirstMessage() const;

    static std::wstring ModulePath(const std::wstring& name);

    const TemporaryDirectory directory;
    Settings settings;
    run_protocol::RunScenarioInfo job;
    platform::OwnedHandle runner;

private:
    std::wstring pathBefore;
    std::unique_ptr<FunctionManager> functions;
};

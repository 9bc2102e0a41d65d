#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "CommonControllerLib/FunctionManager.h"
#include "formats/RunProtocol.h"
#include "platform/processes/ProcessHandle.h"
#include "support/TemporaryDirectory.h"

/// A function module and settings in a temporary directory, and one job. Scripts with the extension ".steps" are run by
/// the program test_scenario.
class ScenarioRunFixture : public testing::Test {
protected:
    ScenarioRunFixture();
    ~ScenarioRunFixture() override;

    /// Settings, to be changed before `Start`.
    struct Settings {
        std::wstring runner;
        int graceSeconds = 600;
        int logLimitBytes = 1 << 20;
        std::wstring stepsInterpreter;
    };

    /// Writes the scenario file and uses it for the job.
    void UseSteps(const std::string& steps);
    void UseScenario(const std::wstring& name, const std::string& content);
    void WriteSettings();
    /// The function's result; on success the job's runner is `runner`.
    [[nodiscard]] long Start();
    /// `UseSteps` and `Start`; returns when the scenario has come to its step "be ready".
    void StartAndAwaitReady(const std::string& steps);
    /// Waits until the runner has ended; its exit code.
    std::int32_t AwaitEnd();
    /// `UseSteps`, `Start`, `AwaitEnd` and that both went well.
    void Run(const std::string& steps);

    [[nodiscard]] long Call(const std::string& function, const std::wstring& input);
    void RequestStop();
    std::wstring InWorkDir(const std::wstring& name) const;
    std::string Log() const;
    run_protocol::RunScenarioResult Result() const;
    std::wstring FirstMessage() const;

    /// The function module under test.
    static std::wstring ModulePath();

    const TemporaryDirectory directory;
    Settings settings;
    run_protocol::RunScenarioInfo job;
    platform::OwnedHandle runner;

private:
    std::wstring pathBefore;
    std::unique_ptr<FunctionManager> functions;
};

#include "kit/processes/ScenarioRunFixture.h"

#include <csignal>
#include <cstring>
#include <set>

#include "text/Text.h"

using SignalsTest = ScenarioRunFixture;

TEST_F(SignalsTest, AScenarioThatASignalEndsFailsAndTheSignalIsNamed) {
    const std::set<int> harmless = {SIGCHLD, SIGCONT, SIGURG, SIGWINCH};
    const std::set<int> stopping = {SIGSTOP, SIGTSTP, SIGTTIN, SIGTTOU};
    for (int signal = 1; signal <= 31; ++signal) {
        if (stopping.contains(signal)) {
            continue;
        }
        const bool isHarmless = harmless.contains(signal);
        Run("raise " + std::to_string(signal) + "\nexit 0", isHarmless ? 0 : run_protocol::crashedExitCode);
        EXPECT_EQ(Result().succeeded, isHarmless) << signal;
        if (!Result().succeeded) {
            EXPECT_EQ(FirstMessage(), L"The scenario ended with exit code " + std::to_wstring(128 + signal) +
                                          L" (signal " + std::to_wstring(signal) + L", " +
                                          text::FromUtf8(sigdescr_np(signal)) + L") and wrote no result.");
        }
    }
}

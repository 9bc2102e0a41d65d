#include "scenario_runner/Supervisor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>

#include "formats/RunProtocol.h"
#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"

using scenario_runner::RunExitReason;
using scenario_runner::StopPolicy;
using scenario_runner::Supervisor;

namespace {

class SupervisorTest : public testing::Test {
protected:
    void LetScenarioEnd() {
        ASSERT_TRUE(tree.Start(test_support::TestProcess({L"exit", L"3"})));
        ASSERT_TRUE(test_support::WaitUntilSignalled(tree.Root()));
    }

    RunExitReason Supervise() {
        return Supervisor(tree, owners, workDir.Path(), stopSignal, nullptr)
            .Run(StopPolicy({}, std::chrono::steady_clock::now()));
    }

    /// Creates "killprocess" beside a running scenario that is watched from `watchAfter` on.
    RunExitReason AskToStopByFile(std::chrono::milliseconds watchAfter) {
        EXPECT_TRUE(tree.Start(test_support::TestProcess({L"wait"})));
        auto ending = std::async(std::launch::async, [this, watchAfter] {
            return Supervisor(tree, owners, workDir.Path(), stopSignal, nullptr, watchAfter)
                .Run(StopPolicy({}, std::chrono::steady_clock::now()));
        });
        WriteTextFile(workDir / run_protocol::killFileName, "");
        return ending.get();
    }

    const TemporaryDirectory workDir;
    const std::vector<void*> owners;
    const platform::StopSignal stopSignal;
    platform::ProcessTree tree;
};

TEST_F(SupervisorTest, AScenarioThatEndsUnaskedEndedOnItsOwn) {
    LetScenarioEnd();
    EXPECT_EQ(Supervise(), RunExitReason::Exited);
}

TEST_F(SupervisorTest, AScenarioThatHeedsARequestBeforeItIsSeenHereWasStopped) {
    LetScenarioEnd();
    WriteTextFile(workDir / run_protocol::killFileName, "");
    EXPECT_EQ(Supervise(), RunExitReason::StopRequested);
}

TEST_F(SupervisorTest, ARequestByFileIsSeenWithoutADirectoryWatch) {
    EXPECT_EQ(AskToStopByFile(std::chrono::hours(1)), RunExitReason::StopRequested);
}

TEST_F(SupervisorTest, ARequestByFileIsSeenByTheDirectoryWatch) {
    EXPECT_EQ(AskToStopByFile(std::chrono::milliseconds(0)), RunExitReason::StopRequested);
}

} // namespace

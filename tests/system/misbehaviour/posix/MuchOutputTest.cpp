#include "kit/processes/ScenarioRunFixture.h"

#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

using MuchOutputTest = ScenarioRunFixture;

/// In MiB; set a larger value to measure.
std::string Amount() {
    return text::ToUtf8(platform::GetEnvironment(L"CONTROLLER_TEST_OUTPUT_MEGABYTES").value_or(L"256"));
}

} // namespace

TEST_F(MuchOutputTest, TheLogIsCappedAndTheRunnerStaysSmall) {
    settings.logLimitBytes = 1 << 20;
    UseSteps("print megabytes " + Amount() + "\nprint memory of runner\nexit 0");
    ASSERT_EQ(Start(), 0);
    // Without a deadline, because the amount is not this test's choice.
    platform::WaitForAny({runner.Get()}, std::nullopt);
    ASSERT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(Result().succeeded);
    const std::string log = Log();
    EXPECT_LE(log.size(), (1U << 20) + 100U);
    const std::size_t memory = log.rfind("runner: ");
    ASSERT_NE(memory, std::string::npos);
    RecordProperty("Memory", log.substr(memory, log.find('\n', memory) - memory));
    constexpr long mostKibibytes = 200 * 1024;
    EXPECT_LT(std::stol(log.substr(memory + 8)), mostKibibytes) << log.substr(memory);
}

TEST_F(MuchOutputTest, AScenarioThatClosesItsOutputEarlyGoesOn) {
    Run("print before\nclose output\nprint after\nwrite result success");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(Log(), "before\n");
}

TEST_F(MuchOutputTest, WhoHoldsTheOutputAfterTheEndIsEnded) {
    Run("print before\nleave daemon\nhave family\nexit 0");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(Log(), "before\n");
}

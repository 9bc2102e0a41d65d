#include "CommonControllerLib/CLIOrvelProxy.h"
#include "frontend/ResponseFlags.h"
#include "kit/doubles/TurnedClock.h"
#include "platform/system/Environment.h"

#include <chrono>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

// Each test runs in its own process, because the variable is read once per process.
class WaitForResponseTest : public testing::Test {
protected:
    void SetSeconds(const std::wstring& text) { platform::SetEnvironment(L"QRV_KT_WAIT_RESPONSE_SEC", text); }

    std::chrono::milliseconds TimeWaited() {
        const auto before = clock.Elapsed();
        WaitForResponse();
        EXPECT_TRUE(clock.SleptOnly(100ms));
        return clock.Elapsed() - before;
    }

    TurnedClock clock;
};

TEST_F(WaitForResponseTest, WithoutTheVariableAWaitWithoutAnswerTakes19900Milliseconds) {
    SetSeconds(L"");
    EXPECT_EQ(TimeWaited(), 19900ms);
    EXPECT_EQ(clock.SleepCount(), 199);
}

TEST_F(WaitForResponseTest, Value3Waits2900Milliseconds) {
    SetSeconds(L"3");
    EXPECT_EQ(TimeWaited(), 2900ms);
}

TEST_F(WaitForResponseTest, Value1Waits900Milliseconds) {
    SetSeconds(L"1");
    EXPECT_EQ(TimeWaited(), 900ms);
}

TEST_F(WaitForResponseTest, Value0DoesNotWait) {
    SetSeconds(L"0");
    EXPECT_EQ(TimeWaited(), 0ms);
}

TEST_F(WaitForResponseTest, TextWithoutANumberDoesNotWait) {
    SetSeconds(L"abc");
    EXPECT_EQ(TimeWaited(), 0ms);
}

TEST_F(WaitForResponseTest, BlanksAndSignAreAllowedAndReadingStopsAtTheFirstNonDigit) {
    SetSeconds(L"  +2x9");
    EXPECT_EQ(TimeWaited(), 1900ms);
}

TEST_F(WaitForResponseTest, ANegativeValueDoesNotWaitAndIsReadAgain) {
    SetSeconds(L"-5");
    EXPECT_EQ(TimeWaited(), 0ms);
    SetSeconds(L"1");
    EXPECT_EQ(TimeWaited(), 900ms);
}

TEST_F(WaitForResponseTest, AValueIsReadOnce) {
    SetSeconds(L"1");
    EXPECT_EQ(TimeWaited(), 900ms);
    SetSeconds(L"3");
    EXPECT_EQ(TimeWaited(), 900ms);
}

TEST_F(WaitForResponseTest, AHugeValueWrapsRoundIn32Bits) {
    SetSeconds(L"4294968"); // times 1000 is 704 beyond 32 bits: 7 ticks
    EXPECT_EQ(TimeWaited(), 600ms);
}

TEST_F(WaitForResponseTest, AHugeValueThatWrapsToANegativeOneDoesNotWait) {
    SetSeconds(L"2147484");
    EXPECT_EQ(TimeWaited(), 0ms);
}

TEST_F(WaitForResponseTest, AnAnswerBeforeTheWaitMeansNoSleep) {
    SetSeconds(L"");
    response_flags::responseStarted = true;
    response_flags::responseFinished = true;
    EXPECT_EQ(TimeWaited(), 0ms);
}

TEST_F(WaitForResponseTest, TheWaitEndsWhenTheAnswerHasEnded) {
    SetSeconds(L"");
    clock.onSleep = [](int sleeps) {
        response_flags::responseStarted = sleeps >= 3;
        response_flags::responseFinished = sleeps >= 5;
    };
    EXPECT_EQ(TimeWaited(), 500ms);
}

TEST_F(WaitForResponseTest, AnAnswerThatBeginsButDoesNotEndHasTheSameBudget) {
    SetSeconds(L"2");
    clock.onSleep = [](int sleeps) { response_flags::responseStarted = sleeps >= 15; };
    EXPECT_EQ(TimeWaited(), 1900ms);
}

TEST_F(WaitForResponseTest, AnAnswerThatOnlyEndsIsWaitedForUntilTheTimeIsSpent) {
    SetSeconds(L"1");
    response_flags::responseFinished = true;
    EXPECT_EQ(TimeWaited(), 900ms);
}

} // namespace

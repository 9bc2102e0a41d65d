#include "CommonControllerLib/ControllerLogManager.h"

#include "kit/ConsoleCapture.h"
#include "kit/doubles/RecordingCompanion.h"
#include "platform/system/Environment.h"

#include <gtest/gtest.h>

// The log reads its environment variable once per process, so each test has its own process.
namespace {

using Log = ControllerLogManager;
using Lines = std::vector<std::wstring>;

/// Which of three messages of the levels -1, 0 and 7 reach the file without `Initialize`.
Lines WrittenWith(const std::wstring& variable) {
    platform::SetEnvironment(L"QRVDBG", variable);
    const RecordingCompanion companion;
    Log::Log(Log::Info, -1, L"level -1");
    Log::Log(L"level 0");
    Log::Log(Log::Info, 7, L"level 7");
    return companion.Events(L"info: ");
}

TEST(LogThresholdTest, WithoutTheVariableTheThresholdIsZero) {
    EXPECT_EQ(WrittenWith(L""), (Lines{L"level -1", L"level 0"}));
}

TEST(LogThresholdTest, MinusOneKeepsTheShortHandsOutOfTheFile) {
    EXPECT_EQ(WrittenWith(L"-1"), Lines{L"level -1"});
}

TEST(LogThresholdTest, NumberInTheVariableIsTheThreshold) {
    EXPECT_EQ(WrittenWith(L" 7 and more"), (Lines{L"level -1", L"level 0", L"level 7"}));
}

TEST(LogThresholdTest, TextThatIsNoNumberGivesZero) {
    EXPECT_EQ(WrittenWith(L"all"), (Lines{L"level -1", L"level 0"}));
}

TEST(LogThresholdTest, InitializeReplacesTheVariable) {
    EXPECT_EQ(WrittenWith(L"-1"), Lines{L"level -1"});
    const RecordingCompanion companion;
    Log::Initialize(0, L"C:\\log\\controller.log", false);
    Log::Log(L"level 0");
    EXPECT_EQ(companion.Events(L"info: "), Lines{L"level 0"});
}

TEST(LogThresholdTest, BeforeInitializeTheConsoleIsOff) {
    const ConsoleCapture console;
    EXPECT_EQ(WrittenWith(L"7").size(), 3U);
    EXPECT_EQ(console.Text(), L"");
}

} // namespace

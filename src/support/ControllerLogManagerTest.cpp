#include "CommonControllerLib/ControllerLogManager.h"

#include "kit/ConsoleCapture.h"
#include "kit/doubles/RecordingCompanion.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <sstream>
#include <string>

namespace {

using Log = ControllerLogManager;
using Lines = std::vector<std::wstring>;

constexpr long lowestLevel = std::numeric_limits<long>::min();

/// The log is global to the process: each test begins by resetting it.
class ControllerLogManagerTest : public testing::Test {
protected:
    ControllerLogManagerTest() {
        Log::Initialize(0, L"", false);
        Log::Initialize(0, L"C:\\log\\controller.log", false);
        companion.Forget();
    }
    ~ControllerLogManagerTest() override { Log::Initialize(0, L"", false); }

    RecordingCompanion companion;
    ConsoleCapture console;
};

TEST_F(ControllerLogManagerTest, WithoutAPathFileOutputIsOffAndTheConsoleShowsAllButDebug) {
    Log::Initialize(0, L"", true);
    companion.Forget();
    Log::Log(Log::Info, 0, L"one");
    Log::Log(Log::Warn, 0, L"two");
    Log::Log(Log::Error, 0, L"three");
    Log::Log(Log::Debug, 0, L"four");
    EXPECT_EQ(companion.Events(), Lines());
    EXPECT_EQ(console.Text(), L"[INFO]        : one\n"
                              L"[WARNING]     : two\n"
                              L"[ERROR]       : three\n");
}

TEST_F(ControllerLogManagerTest, LevelsUpToTheThresholdReachTheFileAndNoneTheConsole) {
    Log::Initialize(5, L"C:\\log\\five.log", false);
    companion.Forget();
    Log::Log(Log::Info, 0, L"level 0");
    Log::Log(Log::Info, 5, L"level 5");
    Log::Log(Log::Info, 6, L"level 6");
    EXPECT_EQ(companion.Events(), (Lines{L"info: level 0", L"info: level 5"}));
    EXPECT_EQ(console.Text(), L"");
}

TEST_F(ControllerLogManagerTest, EachTypeHasItsOwnSinkFunction) {
    Log::Log(Log::Debug, 0, L"a");
    Log::Log(Log::Info, 0, L"b");
    Log::Log(Log::Warn, 0, L"c");
    Log::Log(Log::Error, 0, L"d");
    EXPECT_EQ(companion.Events(), (Lines{L"debug: a", L"info: b", L"warn: c", L"error: d"}));
}

TEST_F(ControllerLogManagerTest, ShortHandsHaveLevelZeroAndTheirOwnType) {
    Log::Log(L"wide");
    Log::Log(std::string("narrow"));
    Log::ErrorLog(L"wide");
    Log::ErrorLog(std::string("narrow"));
    Log::WarnLog(L"wide");
    Log::WarnLog(std::string("narrow"));
    Log::DebugLog(L"wide");
    Log::DebugLog(std::string("narrow"));
    EXPECT_EQ(companion.Events(), (Lines{L"info: wide", L"info: narrow", L"error: wide", L"error: narrow",
                                         L"warn: wide", L"warn: narrow", L"debug: wide", L"debug: narrow"}));
}

TEST_F(ControllerLogManagerTest, SamePathTwiceChangesTheLogFileOnce) {
    Log::Initialize(0, L"C:\\log\\new.log", false);
    Log::Initialize(1, L"C:\\log\\new.log", false);
    EXPECT_EQ(companion.Events(), Lines{L"log file: C:\\log\\new.log"});
}

TEST_F(ControllerLogManagerTest, EmptyPathIsKeptWithoutTellingTheSink) {
    Log::Initialize(0, L"", false);
    EXPECT_EQ(companion.Events(), Lines());
    Log::Initialize(0, L"C:\\log\\controller.log", false);
    EXPECT_EQ(companion.Events(), Lines{L"log file: C:\\log\\controller.log"});
}

TEST_F(ControllerLogManagerTest, UnknownTypeGoesToTheDebugSinkAndIsShownWithAnEmptyTag) {
    Log::Initialize(0, L"C:\\log\\controller.log", true);
    Log::Log(static_cast<Log::MessageType>(4), 0, L"text");
    EXPECT_EQ(companion.Events(), Lines{L"debug: text"});
    EXPECT_EQ(console.Text(), std::wstring(14, L' ') + L": text\n");
}

TEST_F(ControllerLogManagerTest, DebugNeverReachesTheConsoleAtAnyLevel) {
    Log::Initialize(0, L"C:\\log\\controller.log", true);
    Log::Log(Log::Debug, 0, L"at the threshold");
    Log::Log(Log::Debug, 1, L"above the threshold");
    EXPECT_EQ(companion.Events(), Lines{L"debug: at the threshold"});
    EXPECT_EQ(console.Text(), L"");
}

TEST_F(ControllerLogManagerTest, MessageAboveTheFileThresholdIsStillShownWhenTheConsoleTakesIt) {
    Log::Initialize(3, L"", true);
    Log::Log(Log::Info, 3, L"shown");
    Log::Log(Log::Info, 4, L"not shown");
    EXPECT_EQ(console.Text(), L"[INFO]        : shown\n");
}

TEST_F(ControllerLogManagerTest, MessageOfTheSmallestLevelPassesASwitchedOffFile) {
    Log::Initialize(0, L"", false);
    Log::Log(Log::Info, lowestLevel, L"text");
    EXPECT_EQ(companion.Events(), Lines{L"info: text"});
}

TEST_F(ControllerLogManagerTest, MessageOfTheSmallestLevelWithoutAConsoleIsHarmless) {
    Log::Log(Log::Error, lowestLevel, L"text");
    EXPECT_EQ(companion.Events(), Lines{L"error: text"});
    EXPECT_EQ(console.Text(), L"");
}

TEST_F(ControllerLogManagerTest, DetachedConsoleShowsNothingMore) {
    Log::Initialize(0, L"", true);
    Log::Log(L"shown");
    Log::Initialize(0, L"", false);
    Log::Log(L"not shown");
    EXPECT_EQ(console.Text(), L"[INFO]        : shown\n");
}

TEST_F(ControllerLogManagerTest, NarrowTextEndsAtAnEmbeddedZeroByte) {
    Log::Log(std::string("before\0after", 12));
    EXPECT_EQ(companion.Events(), Lines{L"info: before"});
}

TEST_F(ControllerLogManagerTest, MessageReachesTheConsoleAsItIs) {
    Log::Initialize(0, L"", true);
    Log::Log(L"two\nlines\r\t\x1b[2J\u202e \u00e9\u4e2d");
    EXPECT_EQ(console.Text(), L"[INFO]        : two\nlines\r\t\x1b[2J\u202e \u00e9\u4e2d\n");
}

TEST_F(ControllerLogManagerTest, EmptyMessagesAreWrittenToo) {
    Log::Initialize(0, L"C:\\log\\controller.log", true);
    Log::Log(std::string());
    EXPECT_EQ(companion.Events(), Lines{L"info: "});
    EXPECT_EQ(console.Text(), L"[INFO]        : \n");
}

TEST_F(ControllerLogManagerTest, MessageReachesTheFileUnchangedWithoutHeader) {
    Log::Log(L"  two\nlines \u00e9\u4e2d ");
    EXPECT_EQ(companion.Events(), Lines{L"info:   two\nlines \u00e9\u4e2d "});
}

/// A console that counts its flushes.
class CountingConsole : public std::wstringbuf {
public:
    int flushes = 0;

protected:
    int sync() override {
        ++flushes;
        return 0;
    }
};

TEST_F(ControllerLogManagerTest, ConsoleIsFlushedWhenItIsDetachedAndOnlyThen) {
    CountingConsole counting;
    const ConsoleCapture capture(counting);
    Log::Initialize(0, L"", false);
    EXPECT_EQ(counting.flushes, 0);
    Log::Initialize(0, L"", true);
    Log::Initialize(1, L"", true);
    EXPECT_EQ(counting.flushes, 0);
    Log::Initialize(0, L"", false);
    EXPECT_EQ(counting.flushes, 1);
    Log::Initialize(0, L"", false);
    EXPECT_EQ(counting.flushes, 1);
}

/// Sets a C locale in which some byte sequences are not text, and restores the previous one.
class MultibyteLocale {
public:
    MultibyteLocale() : previous(std::setlocale(LC_ALL, nullptr)) {
        for (const char* const name : {"C.UTF-8", "Japanese_Japan.932"}) {
            isSet = isSet || std::setlocale(LC_ALL, name) != nullptr;
        }
    }
    ~MultibyteLocale() { std::setlocale(LC_ALL, previous.c_str()); }
    MultibyteLocale(const MultibyteLocale&) = delete;
    MultibyteLocale& operator=(const MultibyteLocale&) = delete;

    bool IsSet() const { return isSet; }

private:
    const std::string previous;
    bool isSet = false;
};

TEST_F(ControllerLogManagerTest, NarrowTextThatIsNotValidInTheLocaleIsAnEmptyMessageThatIsStillWritten) {
    const MultibyteLocale locale;
    ASSERT_TRUE(locale.IsSet());
    Log::Initialize(0, L"C:\\log\\controller.log", true);
    Log::WarnLog(std::string("begins well, then \x81"));
    EXPECT_EQ(companion.Events(), Lines{L"warn: "});
    EXPECT_EQ(console.Text(), L"[WARNING]     : \n");
}

/// A console that cannot show characters above 255.
class NarrowConsole : public std::wstreambuf {
public:
    std::wstring shown;

protected:
    int_type overflow(int_type character) override {
        if (character > 255) {
            return traits_type::eof();
        }
        shown += traits_type::to_char_type(character);
        return character;
    }
};

TEST_F(ControllerLogManagerTest, FailedConsoleWriteDoesNotEndTheConsole) {
    NarrowConsole narrow;
    const ConsoleCapture capture(narrow);
    Log::Initialize(0, L"", true);
    Log::Log(L"\u4e2d");
    Log::Log(L"after");
    EXPECT_TRUE(narrow.shown.ends_with(L"[INFO]        : after\n"));
    EXPECT_TRUE(std::wcout.good());
}

} // namespace

#include "scenario_runner/ScenarioLog.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "kit/UnreadableFile.h"
#include "platform/files/File.h"

using scenario_runner::ScenarioLog;

namespace {

constexpr std::size_t limit = 2000;
const std::string notice = "[Earlier output was cut; only the end is kept.]\n";

class ScenarioLogTest : public testing::Test {
protected:
    ScenarioLogTest() { EXPECT_TRUE(log.Open()); }
    std::string Content() const { return ReadTextFile(path); }
    /// Line by line.
    void AppendEach(int first, int last);

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"scenario.log";
    ScenarioLog log{directory / L"scenario.log", limit};
};

/// Lines of ten bytes.
std::string Lines(int first, int last) {
    std::string lines;
    for (int number = first; number <= last; ++number) {
        std::string line = std::to_string(number);
        line.resize(9, '.');
        lines += line + "\n";
    }
    return lines;
}

void ScenarioLogTest::AppendEach(int first, int last) {
    for (int number = first; number <= last; ++number) {
        log.Append(Lines(number, number));
    }
}

} // namespace

TEST_F(ScenarioLogTest, ShortOutputIsKeptWhole) {
    log.Append("one\n");
    log.Append("two\n");
    EXPECT_EQ(Content(), "one\ntwo\n");
    log.Close();
    EXPECT_EQ(Content(), "one\ntwo\n");
}

TEST_F(ScenarioLogTest, OutputOfJustTheLimitIsKeptWhole) {
    log.Append(Lines(1, 100));
    log.Append(Lines(101, 200));
    log.Close();
    EXPECT_EQ(Content(), Lines(1, 200));
}

TEST_F(ScenarioLogTest, OfLongerOutputTheEndIsKeptBelowANotice) {
    log.Append(Lines(1, 100));
    log.Append(Lines(101, 199));
    log.Append(Lines(200, 220));
    log.Close();
    // The line that begins before the last 2000 bytes is dropped as a whole.
    EXPECT_EQ(Content(), notice + Lines(22, 220));
}

TEST_F(ScenarioLogTest, WhileItIsWrittenTheFileStaysBelowTwiceTheLimit) {
    for (int number = 1; number <= 5000; ++number) {
        log.Append(Lines(number, number));
        if (number % 50 == 0) {
            ASSERT_LE(Content().size(), 2 * limit + notice.size());
        }
    }
    log.Close();
    EXPECT_TRUE(Content().starts_with(notice));
    EXPECT_TRUE(Content().ends_with(Lines(4900, 5000)));
    EXPECT_LE(Content().size(), limit + notice.size());
}

TEST_F(ScenarioLogTest, OnePieceLargerThanTheLimitIsCutToo) {
    log.Append("before\n");
    log.Append(Lines(1, 1000));
    EXPECT_EQ(Content(), notice + Lines(802, 1000));
    log.Append("after\n");
    log.Close();
    EXPECT_TRUE(Content().ends_with(Lines(900, 1000) + "after\n"));
}

TEST_F(ScenarioLogTest, ALineWithoutEndIsCutBetweenCharacters) {
    std::string text;
    while (text.size() < 2 * limit) {
        text += "\xE4\xB8\xAD";
    }
    log.Append(text);
    log.Close();
    EXPECT_EQ(Content().substr(0, notice.size() + 3), notice + "\xE4\xB8\xAD");
}

TEST_F(ScenarioLogTest, AnEarlierLogIsReplaced) {
    log.Append("old\n");
    log.Close();
    ScenarioLog next(directory / L"scenario.log", limit);
    EXPECT_TRUE(next.Open());
    EXPECT_EQ(Content(), "");
}

TEST_F(ScenarioLogTest, OfALogThatSomebodyElseMadeLongTheEndIsKept) {
    AppendEach(1, 100);
    platform::File scenario;
    ASSERT_TRUE(scenario.OpenForAppending(path, false));
    ASSERT_TRUE(scenario.Write(Lines(101, 2000)));
    AppendEach(2001, 2001);
    EXPECT_EQ(Content(), notice + Lines(1802, 2001));
}

TEST_F(ScenarioLogTest, ALogThatCannotBeReadIsCutLaterAndLosesNothing) {
    AppendEach(1, 350);
    {
        const UnreadableFile unreadable(path);
        AppendEach(351, 500);
    }
    EXPECT_TRUE(Content() == Lines(1, 500));
    AppendEach(501, 501);
    EXPECT_TRUE(Content() == notice + Lines(302, 501));
}

TEST_F(ScenarioLogTest, ALogThatStaysUnreadableStaysBounded) {
    {
        const UnreadableFile unreadable(path);
        AppendEach(1, 5000);
    }
    EXPECT_LE(Content().size(), 4 * limit + notice.size());
    AppendEach(5001, 5001);
    EXPECT_TRUE(Content().ends_with(Lines(5001, 5001)));
    log.Close();
    EXPECT_LE(Content().size(), limit + notice.size());
}

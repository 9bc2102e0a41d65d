#include "scenario_runner/ScenarioLog.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

TEST(ScenarioLogLinkTest, ALinkThatAScenarioPutsInPlaceOfItsLogIsNotWrittenThrough) {
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"scenario.log";
    WriteTextFile(directory / L"precious", "content");
    scenario_runner::ScenarioLog log(path, 1024);
    ASSERT_TRUE(log.Open());
    ASSERT_TRUE(platform::RemoveFile(path));
    ASSERT_EQ(symlink(text::ToUtf8(platform::ToNativeText(directory / L"precious")).c_str(),
                      text::ToUtf8(platform::ToNativeText(path)).c_str()),
              0);
    log.Append(std::string(5000, 'x'));
    log.Close();
    EXPECT_EQ(ReadTextFile(directory / L"precious"), "content");
}

/// On Windows the name of an open file stays in use until it is closed.
TEST(ScenarioLogLinkTest, ALogThatWasRemovedBeginsAgain) {
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"scenario.log";
    scenario_runner::ScenarioLog log(path, 1024);
    ASSERT_TRUE(log.Open());
    log.Append(std::string(1000, 'a') + "\n");
    ASSERT_TRUE(platform::RemoveFile(path));
    log.Append(std::string(1000, 'b') + "\n");
    log.Append(std::string(100, 'c') + "\n");
    EXPECT_EQ(ReadTextFile(path), "[Earlier output was cut; only the end is kept.]\n" + std::string(100, 'c') + "\n");
}

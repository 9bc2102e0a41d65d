#include "system/integration/SettingsSample.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "services/Settings.h"
#include "text/Text.h"

#include <gtest/gtest.h>

namespace {

class SettingsSampleTest : public testing::Test {
protected:
    SettingsSampleTest() {
        WriteTextFile(directory / L"settings.json", SettingsSample());
        settings::UseFile(directory / L"settings.json");
    }
    ~SettingsSampleTest() override { settings::UseFile(L""); }

    TemporaryDirectory directory;
};

TEST_F(SettingsSampleTest, IsReadWithoutAWarning) {
    EXPECT_EQ(text::ToUtf8(settings::Problem()), "");
    const auto directories = settings::Current()->scenarioDirectories;
    ASSERT_EQ(directories.size(), 1U);
    EXPECT_EQ(directories[0].path, directory / L"scenarios");
    // Creates its own log, which would contain warnings about unknown members.
    ControllerCSWrapper::WriteInfoLog(L"The end.");
    EXPECT_EQ(ReadTextFile(directory / L"controller.log").find("has no effect"), std::string::npos);
}

TEST_F(SettingsSampleTest, TheProgramsFindTheirPartsInTheBuildTree) {
    const settings::Settings read = *settings::Current();
    ASSERT_EQ(read.functionModules.size(), 1U);
    for (const std::wstring& part :
         {read.functionModules[0], read.eventTransmitter, read.scenarioRunner, read.stringResourceFile,
          read.scenarioApiDirectory + L"\\ruby\\controller_scenario.rb",
          read.scenarioApiDirectory + L"\\ruby\\controller_scenario\\job.rb"}) {
        EXPECT_TRUE(platform::Exists(part)) << text::ToUtf8(part);
    }
}

} // namespace

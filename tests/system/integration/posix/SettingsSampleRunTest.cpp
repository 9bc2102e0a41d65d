#include "kit/processes/HostProcessFixture.h"

#include "kit/OtherProcesses.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "system/integration/SettingsSample.h"
#include "text/Text.h"

namespace {

using test_support::Ending;

/// The settings file in docs/settings.md, used unchanged. The test has its own runtime directory, because the sample
/// uses the default endpoint name.
class SettingsSampleRunTest : public HostProcessFixture {
protected:
    SettingsSampleRunTest() {
        WriteSettings(SettingsSample());
        EXPECT_TRUE(platform::EnsurePrivateDirectories(directory / L"run"));
    }
    ~SettingsSampleRunTest() override { Cli({L"cadjobs", L"host", L"stop"}); }

    Ending Cli(const std::vector<std::wstring>& arguments) const {
        platform::ProcessStart start = FrontEndProcess(arguments);
        start.environment.emplace_back(L"XDG_RUNTIME_DIR", platform::ToNativeText(directory / L"run"));
        return test_support::RunToEnd(start);
    }
};

TEST_F(SettingsSampleRunTest, ARubyScenarioRunsWithIt) {
    WriteTextFile(directory / L"scenarios\\sub\\first.rb", "require \"controller_scenario\"\n"
                                                           "ControllerScenario.run { |job| job.message(\"done\") }\n");
    const Ending run = Cli({L"cadjobs", L"run", L"first.rb", platform::ToNativeText(directory / L"inputs.txt"),
                            L"--output", platform::ToNativeText(directory / L"out")});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Reports : first"), std::string::npos) << run.output;
    EXPECT_TRUE(platform::IsDirectory(directory / L"out\\inputs"));
}

TEST_F(SettingsSampleRunTest, WithoutItsScenarioDirectoryTheScenariosAreNotJustNone) {
    const Ending list = Cli({L"cadjobs", L"scenarios"});
    EXPECT_EQ(list.exitCode, 1);
    EXPECT_NE(list.output.find("cadjobs: The scenario directory " +
                               text::ToUtf8(platform::ToNativeText(directory / L"scenarios")) +
                               " cannot be searched: No such file or directory.\n"),
              std::string::npos)
        << list.output;
}

} // namespace

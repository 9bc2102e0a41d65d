#include "kit/processes/HostProcessFixture.h"

#include "formats/HostLock.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

/// The endpoint of a host, the content of its lock, and what other processes see of both.
class HostPlaceTest : public HostProcessFixture {
protected:
    host_lock::Holder Holder() const {
        host_lock::Holder holder;
        EXPECT_TRUE(host_lock::FindHolder(directory / L"job_list.json", holder));
        return holder;
    }

    std::string ProcessOfHost() const { return "process " + std::to_string(platform::ProcessNumber(host.Get())); }

    /// The same list with another endpoint name.
    void RenameEndpointAddress() const {
        std::string text = UsualSettings("job_list.json");
        const std::string name = text::ToUtf8(endpointName);
        WriteSettings(text.replace(text.find(name), name.size(), name + "-other"));
    }
};

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(HostPlaceTest, TheLockSaysWhichProcessHasItAndWhereItListens) {
    StartHost();
    const host_lock::Holder holder = Holder();
    EXPECT_EQ(holder.process, platform::ProcessNumber(host.Get()));
    EXPECT_TRUE(holder.isReady);
    EXPECT_EQ(holder.transmitterName, endpointName);
    EXPECT_NE(holder.place.find(endpointName), std::wstring::npos);
    const auto second = test_support::RunToEnd(Host({}));
    EXPECT_EQ(second.exitCode, 4);
    EXPECT_TRUE(Contains(second.output, ProcessOfHost() + ", since 20")) << second.output;
    EXPECT_TRUE(Contains(second.output, " UTC, at " + text::ToUtf8(holder.place))) << second.output;
}

TEST_F(HostPlaceTest, TheStatusSaysWhetherAHostRunsAndForWhatJobsWouldFail) {
    const auto none = test_support::RunToEnd(Host({L"--status"}));
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.output.starts_with("No host runs for the job list ")) << none.output;
    StartHost();
    const auto running = test_support::RunToEnd(Host({L"--status"}));
    EXPECT_TRUE(Contains(running.output, ": " + ProcessOfHost() + ", since 20")) << running.output;
    std::string text = UsualSettings("job_list.json");
    WriteSettings(text.insert(text.find('{') + 1, R"("scenarioRunner":"missing",)"));
    const auto broken = test_support::RunToEnd(Host({L"--status"}));
    EXPECT_EQ(broken.exitCode, 1);
    EXPECT_TRUE(Contains(broken.output, "warning: The program that runs scenarios, ")) << broken.output;
}

TEST_F(HostPlaceTest, AHostWhoseSettingsFileIsBrokenMeanwhileCanBeEnded) {
    StartHost();
    const std::string settings = UsualSettings("job_list.json");
    WriteSettings(settings.substr(0, settings.size() / 2));
    const auto refused = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"list"}));
    EXPECT_EQ(refused.exitCode, 2);
    const auto stopped = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"host", L"stop"}));
    EXPECT_TRUE(Contains(stopped.output, "is asked to end: " + ProcessOfHost())) << stopped.output;
    EXPECT_TRUE(Contains(stopped.output, "The host has ended.")) << stopped.output;
    EXPECT_EQ(stopped.exitCode, 0);
    EXPECT_EQ(AwaitHostEnd(), 0);
    const auto none = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"host", L"stop"}));
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_TRUE(Contains(none.output, "So it is not known which host to end")) << none.output;
}

TEST_F(HostPlaceTest, ABrokenSettingsFileEndsNoHostThatWasStartedWithAnother) {
    StartHost();
    WriteTextFile(directory / L"other.json", "{");
    platform::ProcessStart start = FrontEndProcess({L"cadjobs", L"host", L"stop"});
    start.environment.front().second = platform::ToNativeText(directory / L"other.json");
    const auto refused = test_support::RunToEnd(start);
    EXPECT_EQ(refused.exitCode, 2) << refused.output;
    EXPECT_TRUE(platform::IsProcessRunning(host.Get()));
}

TEST_F(HostPlaceTest, AHostThatEndsLeavesNoLock) {
    StartHost();
    TestClient(endpointName).Terminate();
    EXPECT_EQ(AwaitHostEnd(), 0);
    EXPECT_FALSE(platform::Exists(directory / L"job_list.json.lock"));
}

TEST_F(HostPlaceTest, AHostInTheBackgroundUnderAnotherNameIsRefusedAsInTheForeground) {
    StartHost();
    RenameEndpointAddress();
    for (const std::vector<std::wstring>& arguments : {std::vector<std::wstring>{}, {L"--background"}}) {
        const auto refused = test_support::RunToEnd(Host(arguments));
        EXPECT_EQ(refused.exitCode, 4);
        EXPECT_TRUE(refused.output.starts_with("controller_host: another host is running for the job list "))
            << refused.output;
        EXPECT_TRUE(Contains(refused.output, ProcessOfHost())) << refused.output;
    }
}

TEST_F(HostPlaceTest, AHostInTheBackgroundThatRunsAlreadyIsAsGood) {
    StartHost();
    const auto second = test_support::RunToEnd(Host({L"--background"}));
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(second.output, "");
}

TEST_F(HostPlaceTest, AFrontEndUnderAnotherNameIsToldOfTheHostAndCanEndIt) {
    StartHost();
    RenameEndpointAddress();
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"cadjobs", L"list"}, {L"cadjobs", L"list", L"-f"}}) {
        const auto refused = test_support::RunToEnd(FrontEndProcess(arguments));
        EXPECT_EQ(refused.exitCode, 3);
        EXPECT_TRUE(Contains(refused.output, "cannot be reached from here: " + ProcessOfHost())) << refused.output;
    }
    const auto stopped = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"host", L"stop"}));
    EXPECT_EQ(stopped.exitCode, 0) << stopped.output;
    EXPECT_EQ(AwaitHostEnd(), 0);
}

} // namespace

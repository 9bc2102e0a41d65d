#include "kit/processes/HostProcessFixture.h"

#include "platform/processes/Process.h"

#include <csignal>

namespace {

/// A host that exists but does not respond: stopped, as by Ctrl-Z.
class StoppedHostTest : public HostProcessFixture {
protected:
    StoppedHostTest() {
        StartHost();
        EXPECT_EQ(::kill(static_cast<pid_t>(platform::ProcessNumber(host.Get())), SIGSTOP), 0);
    }

    test_support::Ending Cli(const std::vector<std::wstring>& arguments) const {
        return test_support::RunToEnd(FrontEndProcess(arguments, std::chrono::seconds(1)));
    }
};

TEST_F(StoppedHostTest, EachCommandSaysThatItDoesNotAnswer) {
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"cadjobs", L"list"},
                                                {L"cadjobs", L"wait", L"1"},
                                                {L"cadjobs", L"cancel", L"--all"},
                                                {L"controller_cli", L"-s1"},
                                                {L"controller_cli", L"-c1"},
                                                {L"cadjobs", L"list", L"-f"}}) {
        const auto refused = Cli(arguments);
        EXPECT_EQ(refused.exitCode, 3) << refused.output;
        EXPECT_NE(refused.output.find("The host cannot be reached: it does not answer"), std::string::npos)
            << refused.output;
    }
}

TEST_F(StoppedHostTest, ItCanBeEnded) {
    const auto stopped = Cli({L"cadjobs", L"host", L"stop"});
    EXPECT_EQ(AwaitHostEnd(), 0);
    EXPECT_TRUE(stopped.exitCode == 0 || stopped.output.find("still ending") != std::string::npos) << stopped.output;
}

} // namespace

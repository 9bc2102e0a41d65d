#include "kit/processes/HostProcessFixture.h"

#include "kit/OtherProcesses.h"
#include "kit/modules/ModuleFiles.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/OutputPipe.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <array>
#include <set>

namespace {

using test_support::Ending;

#ifdef CONTROLLER_SANITIZED
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

/// Each front end is a process, and the first ones also start hosts: slow under sanitizers and Wine.
int Rounds() {
    return isSanitized || !std::wstring(platform::programExtension).empty() ? 3 : 50;
}

constexpr int frontEnds = 20;

class RunningFrontEnd {
public:
    void Start(platform::ProcessStart start) {
        ASSERT_TRUE(messages.Open());
        start.output = messages.WriteEnd();
        ASSERT_TRUE(platform::StartProcess(start, process));
        messages.CloseWriteEnd();
    }

    /// After its end. A host that it started may hold the pipe open.
    void ExpectSuccess() {
        ASSERT_TRUE(test_support::WaitUntilSignalled(process.Get()));
        std::string said;
        messages.ReadAvailable(4096, said);
        EXPECT_EQ(platform::ExitCode(process.Get()), 0) << said;
    }

private:
    platform::OutputPipe messages;
    platform::OwnedHandle process;
};

/// Front ends that start when no host runs.
class FirstContactTest : public HostProcessFixture {
protected:
    /// The fixture ends a host that the test itself started.
    ~FirstContactTest() override {
        if (!host) {
            StopHost();
        }
    }

    Ending Cli(const std::vector<std::wstring>& arguments) const {
        return test_support::RunToEnd(FrontEndProcess(arguments));
    }

    void StopHost() const {
        Cli({L"cadjobs", L"host", L"stop"});
        AwaitNoHost();
    }

    std::wstring OutputOf(int frontEnd) const { return directory / (L"out" + std::to_wstring(frontEnd) + L".txt"); }

    /// Starts all at once, waits for their ends, and returns the contents of their output files.
    std::vector<std::string> RunTogether(std::vector<std::wstring> arguments) const {
        std::array<RunningFrontEnd, frontEnds> running;
        arguments.insert(arguments.end(), {L"-o", L""});
        for (int number = 0; number < frontEnds; ++number) {
            arguments.back() = platform::ToNativeText(OutputOf(number));
            running[static_cast<std::size_t>(number)].Start(FrontEndProcess(arguments));
        }
        std::vector<std::string> outputs;
        for (int number = 0; number < frontEnds; ++number) {
            running[static_cast<std::size_t>(number)].ExpectSuccess();
            outputs.push_back(ReadTextFile(OutputOf(number)));
        }
        return outputs;
    }

    static std::string Line(const std::string& text) { return text + std::string(platform::lineEnd); }
};

TEST_F(FirstContactTest, TwentyFrontEndsAtOnceWithoutAHostLoseNothing) {
    const std::wstring jobs = platform::ToNativeText(JobsFile("exit 0"));
    for (int round = 0; round < Rounds() && !HasFailure(); ++round) {
        std::set<std::string> expected;
        for (int number = 1; number <= frontEnds; ++number) {
            expected.insert(Line(std::to_string(round * frontEnds + number) + ",Queued"));
        }
        const std::vector<std::string> written = RunTogether({L"controller_cli", L"-i", jobs});
        EXPECT_EQ(std::set<std::string>(written.begin(), written.end()), expected) << "round " << round;
        StopHost();
    }
}

TEST_F(FirstContactTest, WhoAsksForAStatusWhileALongListIsLoadedIsAnswered) {
    SaveLongList();
    const std::vector<std::string> expected(frontEnds, Line("1,Success") + Line("5000,Success"));
    EXPECT_EQ(RunTogether({L"controller_cli", L"-s", L"1,5000"}), expected);
}

/// Each line is a number and "Queued".
void ExpectQueued(const std::string& lines, int count) {
    const std::string lineEnd(platform::lineEnd);
    std::string expected;
    for (int number = 1; number <= count; ++number) {
        expected += std::to_string(number) + ",Queued" + lineEnd;
    }
    EXPECT_TRUE(lines == expected) << lines.substr(0, 200);
}

TEST_F(FirstContactTest, ARequestOfTenThousandSetsIsAnsweredWhole) {
    StartHost();
    const Ending ending = Cli({L"controller_cli", L"-f", L"-i", platform::ToNativeText(JobsFile("wait", 10'000))});
    EXPECT_EQ(ending.exitCode, 0);
    ExpectQueued(ending.output, 10'000);
}

TEST_F(FirstContactTest, ARequestOfAHundredThousandSetsIsAnsweredWhole) {
    if (isSanitized) {
        GTEST_SKIP() << "takes minutes under sanitizers";
    }
    StartHost();
    const Ending ending = Cli({L"controller_cli", L"-f", L"-i", platform::ToNativeText(JobsFile("wait", 100'000))});
    EXPECT_EQ(ending.exitCode, 0);
    ExpectQueued(ending.output, 100'000);
}
TEST_F(FirstContactTest, ATransmitterWithTheTwoOperationsAloneIsEnough) {
    std::string settings = UsualSettings("job_list.json");
    const std::string module =
        text::ToUtf8(platform::ToNativeText(test_modules::ModulePath(L"transmitter_two_operations")));
    std::string escaped;
    for (const char character : module) {
        escaped += character == '\\' ? "\\\\" : std::string(1, character);
    }
    settings.insert(1, "\"eventTransmitter\":\"" + escaped + "\",");
    WriteSettings(settings);
    EXPECT_EQ(Cli({L"controller_cli", L"-i", platform::ToNativeText(JobsFile("exit 0"))}).output, Line("1,Queued"));
    EXPECT_EQ(Cli({L"controller_cli", L"-s", L"7"}).output, Line("7,Unknown"));
    EXPECT_EQ(Cli({L"cadjobs", L"wait", L"1"}).exitCode, 0);
    EXPECT_EQ(Cli({L"controller_cli", L"-s", L"1", L"-f"}).output, Line("1,Success"));
    // Nothing reports the end of the host: only the response timeout ends such a wait.
    platform::SetEnvironment(L"QRV_KT_WAIT_RESPONSE_SEC", L"1");
    StopHost();
    EXPECT_EQ(Cli({L"cadjobs", L"-f", L"list"}).exitCode, 3);
    WriteSettings(UsualSettings("job_list.json"));
    platform::SetEnvironment(L"QRV_KT_WAIT_RESPONSE_SEC", L"");
}

} // namespace

#include "kit/front_end/ControllerCliFixture.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

using Arguments = std::vector<std::wstring>;

/// Hosts that one-letter commands do not reach at once.
class ShortOptionConnectionTest : public ControllerCliFixture {
protected:
    /// What goes to standard error.
    std::string WithoutHost(const Arguments& arguments) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 3) << text::ToUtf8(arguments.front());
        return console.errors;
    }
};

TEST_F(ShortOptionConnectionTest, AClientAloneStartsNoHost) {
    host.runs = false;
    for (const wchar_t* const command : {L"-s1", L"-c1"}) {
        EXPECT_EQ(WithoutHost({command, L"-f"}),
                  "controller_cli: No host is running. Start one with cadjobs host start.\n");
    }
    EXPECT_EQ(host.startCount, 0);
    EXPECT_EQ(console.output, "");
}

TEST_F(ShortOptionConnectionTest, AHostThatStaysBusyIsToldAsBusy) {
    host.transmitter.isBusy = true;
    host.transmitter.connectionProblem = L"it is busy: 256 front ends are connected";
    host.transmitter.canSend = false;
    timeout = std::chrono::milliseconds(0);
    EXPECT_EQ(WithoutHost({L"-s1"}),
              "controller_cli: The host cannot be reached: it is busy: 256 front ends are connected\n");
}

TEST_F(ShortOptionConnectionTest, AHostThatListensElsewhereIsNamed) {
    host.runs = false;
    host.runningHost = L"process 4711, at /run/x";
    host.looksUntilReady = 1000000;
    for (const Arguments& arguments : {Arguments{L"-s1"}, Arguments{L"-s1", L"-f"}}) {
        EXPECT_EQ(WithoutHost(arguments).find(
                      "controller_cli: A host runs, but cannot be reached from here: process 4711, at /run/x. "),
                  0U)
            << console.errors;
    }
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(ShortOptionConnectionTest, HandlersAreTakenAwayAtTheEnd) {
    timeout = std::chrono::milliseconds(0);
    (void)WithoutHost({L"-c1"});
    EXPECT_FALSE(host.transmitter.HasHandlers());
}

TEST_F(ShortOptionConnectionTest, AJobListThatIsKeptAsideIsNamedFirst) {
    UseSettings(R"({"version":1,"logFile":"","jobListFile":"job_list.json"})");
    const std::wstring keptAside = directory / L"job_list.json.corrupt-20240305T070809Z";
    WriteTextFile(keptAside, "no list");
    host.answers[L"CheckJobStatusRequest"] = {L"CheckJobStatusResponse", LR"({"CheckJobStatusResponse":[]})"};
    Run({L"-s", L"1", L"-f"});
    EXPECT_EQ(console.errors.find("controller_cli: A job list that could not be read is kept as " +
                                  text::ToUtf8(platform::ToNativeText(keptAside))),
              0U)
        << console.errors;
}

TEST_F(ShortOptionConnectionTest, WrongSettingsAreRefusedBeforeAnythingIsSent) {
    UseSettings("{\"version\":1,\"logFile\":\"\",\"culture\":7}");
    EXPECT_EQ(Run({L"-s1"}), 2);
    EXPECT_EQ(console.errors.find("controller_cli: The settings cannot be used: "), 0U) << console.errors;
    EXPECT_TRUE(host.Requests().empty());
}

} // namespace

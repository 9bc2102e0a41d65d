#include "kit/processes/HostProcessFixture.h"

#include "kit/Deadline.h"
#include "platform/files/NativePath.h"
#include "platform/system/posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>

#include <pty.h>
#include <unistd.h>

namespace {

/// A terminal as standard output of a program, read from the user's side.
class Terminal {
public:
    explicit Terminal(unsigned short width) {
        winsize size = {24, width, 0, 0};
        int programSide = -1;
        if (openpty(&personSide, &programSide, nullptr, nullptr, &size) != 0) {
            throw std::runtime_error("There is no terminal to be had.");
        }
        personHandle = platform::OwnedHandle(platform::HandleOf(personSide));
        programHandle = platform::OwnedHandle(platform::HandleOf(programSide));
    }

    void Start(platform::ProcessStart start) {
        start.output = programHandle.Get();
        if (!platform::StartProcess(start, process)) {
            throw std::runtime_error("The program cannot be started.");
        }
        programHandle.Reset();
    }

    /// Reads until `text` has arrived, and returns everything read.
    std::string ReadUntil(const std::string& text) {
        const test_support::Deadline deadline("the output " + text);
        std::string all;
        while (all.find(text) == std::string::npos && ContinueRead(all)) {
        }
        return all;
    }

    /// Reads until the program has ended.
    std::string ReadToEnd() {
        const test_support::Deadline deadline("the end of the output");
        std::string all;
        while (ContinueRead(all)) {
        }
        return all;
    }

    void Interrupt() const { kill(static_cast<pid_t>(platform::ProcessNumber(process.Get())), SIGINT); }

    std::int32_t ExitCode() const {
        EXPECT_TRUE(test_support::WaitUntilSignalled(process.Get()));
        return platform::ExitCode(process.Get()).value_or(-1);
    }

private:
    /// False at the end, which is an error on Linux. The terminal adds a carriage return before each line feed.
    bool ContinueRead(std::string& all) const {
        std::array<char, 4096> buffer;
        const ssize_t count = read(personSide, buffer.data(), buffer.size());
        all.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        std::erase(all, '\r');
        return count > 0 || (count < 0 && errno == EINTR);
    }

    int personSide = -1;
    platform::OwnedHandle personHandle;
    platform::OwnedHandle programHandle;
    platform::OwnedHandle process;
};

/// What a user sees of the front end.
class TerminalTest : public HostProcessFixture {
protected:
    using Environment = std::vector<std::pair<std::wstring, std::optional<std::wstring>>>;

    platform::ProcessStart Cli(const std::vector<std::wstring>& arguments, const Environment& variables = {}) const {
        platform::ProcessStart start = FrontEndProcess(arguments);
        start.environment.insert(start.environment.end(), variables.begin(), variables.end());
        return start;
    }

    /// The command line that runs a scenario with these steps.
    std::vector<std::wstring> Run(const std::string& steps) const {
        WriteTextFile(directory / L"steps.rb", steps);
        return {L"cadjobs",
                L"run",
                platform::ToNativeText(directory / L"steps.rb"),
                platform::ToNativeText(directory / L"inputs.txt"),
                L"--output",
                platform::ToNativeText(directory / L"out")};
    }

    /// The table of a successful job on a terminal of 48 columns.
    std::string Table(const Environment& variables) {
        StartHost();
        EXPECT_EQ(test_support::RunToEnd(Cli(Run("exit 0"))).exitCode, 0);
        Terminal terminal(48);
        terminal.Start(Cli({L"cadjobs", L"list"}, variables));
        return terminal.ReadToEnd();
    }

    const Environment colourful = {{L"TERM", L"xterm"}, {L"NO_COLOR", std::nullopt}};
    const Environment noColour = {{L"TERM", L"xterm"}, {L"NO_COLOR", L"1"}};
};

TEST_F(TerminalTest, ATableHasColoursAndFits) {
    const std::string table = Table(colourful);
    EXPECT_NE(table.find("\x1b[32mSuccess\x1b[0m"), std::string::npos) << table;
    EXPECT_NE(table.find("\xe2\x80\xa6"), std::string::npos) << table;
}

TEST_F(TerminalTest, NoColorSwitchesColoursOff) {
    const std::string table = Table(noColour);
    EXPECT_EQ(table.find('\x1b'), std::string::npos) << table;
    EXPECT_NE(table.find("Success"), std::string::npos) << table;
}

TEST_F(TerminalTest, ATerminalThatIsDumbOrHasNoNameIsNone) {
    StartHost();
    EXPECT_EQ(test_support::RunToEnd(Cli(Run("exit 0"))).exitCode, 0);
    for (const std::optional<std::wstring>& name :
         {std::optional<std::wstring>(L"dumb"), std::optional(std::wstring()), std::optional<std::wstring>()}) {
        Terminal terminal(48);
        terminal.Start(Cli({L"cadjobs", L"list"}, {{L"TERM", name}, {L"NO_COLOR", std::nullopt}}));
        const std::string table = terminal.ReadToEnd();
        EXPECT_EQ(table.find('\x1b'), std::string::npos) << table;
        EXPECT_NE(table.find("Output folder, or what the scenario says\n"), std::string::npos) << table;
    }
}

TEST_F(TerminalTest, ProgressIsDrawnOverAndGivesWayToTheOutcome) {
    StartHost();
    Terminal terminal(100);
    terminal.Start(Cli(Run("wait"), noColour));
    const std::string bar = "[....................]   0 %";
    EXPECT_NE(terminal.ReadUntil(bar).find(bar), std::string::npos);
    EXPECT_EQ(test_support::RunToEnd(Cli({L"cadjobs", L"cancel", L"1"})).exitCode, 0);
    const std::string rest = terminal.ReadToEnd();
    const std::size_t cleared = rest.rfind("\x1b[3A\x1b[J");
    ASSERT_NE(cleared, std::string::npos) << rest;
    EXPECT_NE(rest.find("Succeeded: 0, failed: 0, cancelled: 1\n", cleared), std::string::npos) << rest;
}

TEST_F(TerminalTest, CtrlCEndsTheWatchingAlone) {
    StartHost();
    ASSERT_EQ(
        test_support::RunToEnd(Cli({L"controller_cli", L"-i", platform::ToNativeText(JobsFile("wait"))})).exitCode, 0);
    Terminal terminal(100);
    terminal.Start(Cli({L"cadjobs", L"watch"}, noColour));
    terminal.ReadUntil("Running");
    terminal.Interrupt();
    terminal.ReadToEnd();
    EXPECT_EQ(terminal.ExitCode(), 0);
    EXPECT_NE(test_support::RunToEnd(Cli({L"cadjobs", L"list"})).output.find("Running"), std::string::npos);
}

} // namespace

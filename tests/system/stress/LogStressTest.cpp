#include "CommonControllerLib/ControllerLogManager.h"
#include "kit/ConsoleCapture.h"
#include "kit/Deadline.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "services/log/RotatingFile.h"
#include "system/stress/OperationCounts.h"
#include "system/stress/Rounds.h"
#include "system/stress/ThreadTeam.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t writerCount = 6;
/// Without atomic appends, concurrent writers overwrite each other.
constexpr bool appendsAreAtomic = APPENDS_ARE_ATOMIC != 0;

/// A message that reveals missing or foreign parts.
std::string Message(std::uint32_t writer, std::uint32_t number) {
    const std::size_t length = number % 13 == 0 ? 6000 : number % 40;
    return '<' + std::to_string(writer) + '.' + std::to_string(number) + ' ' +
           std::string(length, static_cast<char>('a' + number % 26)) + '>';
}

/// How often each message occurs in the output.
class Found {
public:
    /// `isHead` checks the text before a message.
    void AddLines(const std::string& text, const std::function<bool(const std::string& head)>& isHead) {
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);) {
            const std::size_t message = line.find('<');
            ASSERT_NE(message, std::string::npos) << line.substr(0, 100);
            EXPECT_TRUE(isHead(line.substr(0, message))) << line.substr(0, 100);
            ++times[line.substr(message)];
        }
        EXPECT_TRUE(text.empty() || text.back() == '\n') << "The last line is not whole.";
    }

    void AddDirectory(const std::wstring& directory, const std::function<bool(const std::string& head)>& isHead) {
        std::vector<platform::DirectoryEntry> entries;
        EXPECT_TRUE(platform::ListDirectory(directory, entries));
        for (const platform::DirectoryEntry& entry : entries) {
            AddLines(ReadTextFile(directory + L'\\' + entry.name), isHead);
        }
    }

    /// Expects each message of the writers once, and no others.
    void ExpectAll(std::uint32_t writers, std::uint32_t messagesEach) {
        for (std::uint32_t writer = 0; writer < writers; ++writer) {
            for (std::uint32_t number = 0; number < messagesEach; ++number) {
                EXPECT_EQ(times[Message(writer, number)], 1) << writer << "." << number;
            }
        }
        EXPECT_EQ(times.size(), std::size_t{writers} * messagesEach);
    }

    /// Expects no duplicates, and only messages that were written.
    void ExpectOnlyWhole(std::uint32_t writers, std::uint32_t messagesEach) {
        std::size_t known = 0;
        for (std::uint32_t writer = 0; writer < writers; ++writer) {
            for (std::uint32_t number = 0; number < messagesEach; ++number) {
                const auto found = times.find(Message(writer, number));
                known += found == times.end() ? 0U : 1U;
                EXPECT_TRUE(found == times.end() || found->second == 1);
            }
        }
        EXPECT_EQ(times.size(), known);
    }

private:
    std::map<std::string, int> times;
};

/// "2026-11-21T10:00:00.123Z info    [4711] "
bool IsRecordHead(const std::string& head) {
    constexpr std::size_t shortest = 36;
    return head.size() >= shortest && head[4] == '-' && head[10] == 'T' && head[23] == 'Z' &&
           head.substr(25, 9) == "info    [" && head.substr(head.size() - 2) == "] ";
}

/// The log of the process with all its users, for one round.
class LogRound {
public:
    explicit LogRound(OperationCounts& operationCounts) : counts(operationCounts) { SetUpAnew(0); }
    ~LogRound() { ControllerLogManager::Initialize(0, L"", false); }
    LogRound(const LogRound&) = delete;
    LogRound& operator=(const LogRound&) = delete;

    void Run() {
        ThreadTeam disturbing;
        disturbing.AddEndless([this] { SetUpAnew(turn++); });
        disturbing.AddEndless([this] { SetUpAnew(turn++); });
        disturbing.AddEndless([this] { MoveAway(); });
        ThreadTeam writing;
        for (std::uint32_t writer = 0; writer < writerCount; ++writer) {
            writing.Add([this, writer] { Write(writer); });
        }
        writing.Join();
        disturbing.Join();
    }

    void CheckEnd() {
        ControllerLogManager::Initialize(0, L"", false);
        Found inFiles;
        inFiles.AddDirectory(directory.Path(), IsRecordHead);
        inFiles.ExpectAll(writerCount, messagesEach);
        Found onConsole;
        const std::wstring shown = console.Text();
        onConsole.AddLines(std::string(shown.begin(), shown.end()),
                           [](const std::string& head) { return head == "[INFO]        : "; });
        onConsole.ExpectOnlyWhole(writerCount, messagesEach);
    }

private:
    static constexpr std::uint32_t messagesEach = 1000;

    /// Selects one of two files, and the console or not.
    void SetUpAnew(std::uint32_t number) {
        ControllerLogManager::Initialize(0, directory / (number % 3 == 0 ? L"a.log" : L"b.log"), number % 2 == 0);
        counts.Add("Initialize");
    }

    /// Like a user who wants a new log file.
    void MoveAway() {
        const std::wstring target = directory / (L"moved-" + std::to_wstring(++moved));
        if (platform::RenameFile(directory / L"a.log", target)) {
            counts.Add("log files moved away");
        }
    }

    void Write(std::uint32_t writer) {
        for (std::uint32_t number = 0; number < messagesEach; ++number) {
            ControllerLogManager::Log(Message(writer, number));
        }
        counts.Add("records", messagesEach);
    }

    OperationCounts& counts;
    TemporaryDirectory directory;
    ConsoleCapture console;
    std::atomic<std::uint32_t> turn = 0;
    std::uint32_t moved = 0;
};

} // namespace

TEST(LogStressTest, EveryRecordIsWholeAndThereOnceWhileTheLogIsSetUpAnewAndMovedAway) {
    OperationCounts counts("log");
    for (Rounds rounds; rounds.Next();) {
        const test_support::Deadline deadline("the threads that log", std::chrono::minutes(5));
        LogRound round(counts);
        round.Run();
        round.CheckEnd();
        counts.Add("rounds");
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

TEST(LogStressTest, ManyWhoRotateTheSameFileLoseNothing) {
    constexpr std::uint32_t messagesEach = 400;
    OperationCounts counts("rotation");
    for (Rounds rounds; rounds.Next();) {
        const test_support::Deadline deadline("the rotation of a log", std::chrono::minutes(5));
        const TemporaryDirectory directory;
        {
            std::mutex turn;
            ThreadTeam processes; // like processes: each with its own file object
            for (std::uint32_t process = 0; process < writerCount; ++process) {
                processes.Add([&directory, &turn, process] {
                    log_file::RotatingFile file({.bytes = 40'000, .files = 100});
                    file.SetPath(directory / L"shared.log");
                    for (std::uint32_t number = 0; number < messagesEach; ++number) {
                        std::unique_lock<std::mutex> guard(turn, std::defer_lock);
                        if (!appendsAreAtomic) {
                            guard.lock();
                        }
                        file.Append(Message(process, number) + "\n", number);
                    }
                });
            }
        }
        Found found;
        found.AddDirectory(directory.Path(), [](const std::string& head) { return head.empty(); });
        found.ExpectAll(writerCount, messagesEach);
        counts.Add("records", std::uint64_t{writerCount} * messagesEach);
        counts.Add("rounds");
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

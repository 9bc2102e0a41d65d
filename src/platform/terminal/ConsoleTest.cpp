#include "platform/terminal/Console.h"

#include <iostream>
#include <string>

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/processes/Waiting.h"
#include "text/Text.h"

namespace {

class ConsoleTest : public testing::Test {
protected:
    /// What is received when `text` is written.
    std::string Written(const std::string& text) const {
        const std::wstring path = directory / L"output";
        {
            const auto redirected = RedirectedOutput::ToFile(path);
            EXPECT_TRUE(platform::WriteOutput(text));
        }
        return ReadTextFile(path);
    }

    TemporaryDirectory directory;
};

/// Restores the stream for other tests.
class WideOutputRestorer {
public:
    WideOutputRestorer() : buffer(std::wcout.rdbuf()) {}
    ~WideOutputRestorer() { std::wcout.rdbuf(buffer); }
    WideOutputRestorer(const WideOutputRestorer&) = delete;
    WideOutputRestorer& operator=(const WideOutputRestorer&) = delete;

private:
    std::wstreambuf* const buffer;
};

TEST_F(ConsoleTest, OutputArrivesAsItIs) {
    const WideOutputRestorer restorer;
    platform::PrepareConsole();
    for (const std::string& text :
         {std::string("Gr\xC3\xB6\xC3\x9F\nnext\r\n"), std::string(), std::string("a\0b", 3)}) {
        EXPECT_EQ(Written(text), text);
    }
}

TEST_F(ConsoleTest, WideOutputArrivesAsUtf8) {
    const WideOutputRestorer restorer;
    platform::PrepareConsole();
    const std::wstring path = directory / L"output";
    {
        const auto redirected = RedirectedOutput::ToFile(path);
        std::wcout << text::FromUtf8("Gr\xC3\xB6\xC3\x9F\xF0\x9F\x98\x80") << L'\n' << std::flush;
    }
    EXPECT_TRUE(std::wcout.good());
    EXPECT_EQ(ReadTextFile(path), "Gr\xC3\xB6\xC3\x9F\xF0\x9F\x98\x80\n");
}

TEST_F(ConsoleTest, WideOutputIsOneLineForOneTextAndSteersNoTerminal) {
    const WideOutputRestorer restorer;
    platform::PrepareConsole();
    const std::wstring path = directory / L"output";
    {
        const auto redirected = RedirectedOutput::ToFile(path);
        std::wcout << std::wstring(L"Input: a\n[ERROR]       : forged\r\x1b[2J\x9b\u202e is not found\n");
        std::wcout << std::wstring(L"next\n");
    }
    EXPECT_EQ(ReadTextFile(path), "Input: a\\n[ERROR]       : forged\\r\\u001b[2J\\u009b\\u202e is not found\nnext\n");
}

TEST_F(ConsoleTest, MuchOutputArrivesWhole) {
    const std::string text(1'000'000, 'x');
    EXPECT_TRUE(Written(text) == text);
}

TEST_F(ConsoleTest, ErrorOutputIsAnotherStream) {
    testing::internal::CaptureStderr();
    platform::WriteErrorOutput("something failed\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "something failed\n");
}

TEST_F(ConsoleTest, AFileIsNoTerminal) {
    bool isTerminal = true;
    std::size_t width = 0;
    {
        const auto redirected = RedirectedOutput::ToFile(directory / L"output");
        isTerminal = platform::IsOutputTerminal();
        width = platform::TerminalWidth();
    }
    EXPECT_FALSE(isTerminal);
    EXPECT_EQ(width, 80u);
}

TEST_F(ConsoleTest, AReaderThatHasGoneIsToldAndEndsNobody) {
    platform::Error result;
    {
        const auto redirected = RedirectedOutput::ToBrokenPipe();
        result = platform::WriteOutput("nobody reads this");
    }
    EXPECT_FALSE(result);
    EXPECT_TRUE(platform::IsReaderGone(result));
    EXPECT_EQ(Written("the next one does"), "the next one does");
}

TEST_F(ConsoleTest, AnOutputThatCannotBeWrittenIsTold) {
    platform::Error result;
    {
        const auto redirected = RedirectedOutput::ToUnwritable();
        result = platform::WriteOutput("nobody gets this");
    }
    EXPECT_FALSE(result);
    EXPECT_FALSE(platform::IsReaderGone(result));
    EXPECT_FALSE(platform::IsReaderGone(platform::Error()));
}

TEST_F(ConsoleTest, AFileHasNoReaderToWaitFor) {
    void* reader = &directory;
    {
        const auto redirected = RedirectedOutput::ToFile(directory / L"output");
        reader = platform::OutputReaderGone();
    }
    EXPECT_EQ(reader, nullptr);
}

// Null on Windows, where only a write detects it.
TEST_F(ConsoleTest, TheEndOfAReaderIsSignalled) {
    const auto redirected = RedirectedOutput::ToBrokenPipe();
    void* const reader = platform::OutputReaderGone();
    EXPECT_EQ(reader == nullptr, OnWindows());
    if (reader != nullptr) {
        EXPECT_EQ(platform::WaitForAny({reader}, std::chrono::milliseconds(0)), std::size_t{0});
    }
}

} // namespace

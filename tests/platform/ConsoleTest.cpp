#include "platform/Console.h"

#include <string>

#include <gtest/gtest.h>

#include "platform/SystemHelpers.h"
#include "support/TemporaryFolder.h"

namespace {

class ConsoleTest : public testing::Test {
protected:
    /// What arrives when `text` is written.
    std::string Written(const std::string& text) const {
        const std::wstring path = folder / L"output";
        {
            const auto redirected = RedirectedOutput::ToFile(path);
            platform::WriteOutput(text);
        }
        return ReadTextFile(path);
    }

    TemporaryFolder folder;
};

TEST_F(ConsoleTest, OutputArrivesAsItIs) {
    platform::PrepareConsole();
    for (const std::string& text :
         {std::string("Gr\xC3\xB6\xC3\x9F\nnext\r\n"), std::string(), std::string("a\0b", 3)}) {
        EXPECT_EQ(Written(text), text);
    }
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
        const auto redirected = RedirectedOutput::ToFile(folder / L"output");
        isTerminal = platform::IsOutputTerminal();
        width = platform::TerminalWidth();
    }
    EXPECT_FALSE(isTerminal);
    EXPECT_EQ(width, 80u);
}

TEST_F(ConsoleTest, AReaderThatHasGoneIsIgnored) {
    {
        const auto redirected = RedirectedOutput::ToBrokenPipe();
        platform::WriteOutput("nobody reads this");
    }
    EXPECT_EQ(Written("the next one does"), "the next one does");
}

} // namespace

#include "scenario_runner/OutputCapture.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <unistd.h>

#include "kit/TemporaryDirectory.h"
#include "platform/system/OwnedHandle.h"
#include "platform/system/posix/Descriptor.h"

namespace {

using std::chrono::milliseconds;

/// The output of a scenario is a copy of the write end.
class OutputCaptureTest : public testing::Test {
protected:
    OutputCaptureTest() {
        EXPECT_TRUE(capture.Open());
        scenario = platform::OwnedHandle(platform::CopyHandle(capture.WriteEnd()));
        capture.Start();
    }

    void Print(std::string_view text) const {
        EXPECT_EQ(write(platform::DescriptorOf(scenario.Get()), text.data(), text.size()),
                  static_cast<ssize_t>(text.size()));
    }

    void EndScenario() { scenario = platform::OwnedHandle(); }

    std::string LogAtEnd() {
        capture.Finish(std::chrono::minutes(10));
        return ReadTextFile(directory / L"scenario.log");
    }

    static std::ptrdiff_t Threads() {
        const std::filesystem::directory_iterator tasks("/proc/self/task");
        return std::distance(begin(tasks), end(tasks));
    }

    const TemporaryDirectory directory;
    const std::ptrdiff_t threadsBefore = Threads();
    scenario_runner::OutputCapture capture{directory / L"scenario.log", 1 << 20};
    platform::OwnedHandle scenario;
};

TEST_F(OutputCaptureTest, ARunWithoutOutputHasNoThread) {
    capture.CarryIfReadable();
    EXPECT_EQ(Threads(), threadsBefore);
    EXPECT_NE(capture.Readable(), nullptr);
}

TEST_F(OutputCaptureTest, TheEndOfTheOutputNeedsNoThread) {
    EndScenario();
    capture.CarryIfReadable();
    EXPECT_EQ(capture.Readable(), nullptr);
    EXPECT_EQ(Threads(), threadsBefore);
    EXPECT_EQ(LogAtEnd(), "");
}

TEST_F(OutputCaptureTest, TheFirstOutputStartsTheThreadThatReadsTheRest) {
    Print("first ");
    capture.CarryIfReadable();
    // The thread sanitizer starts a thread of its own with the first one.
    EXPECT_GT(Threads(), threadsBefore);
    EXPECT_EQ(capture.Readable(), nullptr);
    Print("second");
    EndScenario();
    EXPECT_EQ(LogAtEnd(), "first second");
}

TEST_F(OutputCaptureTest, OutputThatNobodyLookedAtIsReadAtTheEnd) {
    Print("only");
    EndScenario();
    EXPECT_EQ(LogAtEnd(), "only");
}

TEST_F(OutputCaptureTest, OutputHeldOpenByAnotherProcessIsReadUntilTheTimeoutEnds) {
    capture.Finish(milliseconds(0));
    EXPECT_EQ(capture.Readable(), nullptr);
    Print("late");
    EndScenario();
    EXPECT_EQ(LogAtEnd(), "late");
}

} // namespace

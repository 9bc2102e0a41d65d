#include "kit/processes/HostProcessFixture.h"

#include "platform/files/NativePath.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

#include <optional>

#include <fcntl.h>

namespace {

using test_support::Ending;

/// Programs whose standard output fails or has no reader.
class OutputFaultTest : public HostProcessFixture {
protected:
    /// With a full disk as both standard streams.
    static std::optional<std::int32_t> ExitCodeOnFullDisk(platform::ProcessStart start) {
        const platform::OwnedHandle full(platform::HandleOf(open("/dev/full", O_WRONLY | O_CLOEXEC)));
        start.output = full.Get();
        platform::OwnedHandle process;
        EXPECT_TRUE(platform::StartProcess(start, process));
        EXPECT_TRUE(test_support::WaitUntilSignalled(process.Get()));
        return platform::ExitCode(process.Get());
    }

    /// Without standard output; returns standard error.
    static Ending WithoutOutput(platform::ProcessStart start) {
        start.arguments.insert(start.arguments.begin(),
                               {L"-c", L"exec \"$0\" \"$@\" >&-", platform::ToNativeText(start.program)});
        start.program = L"/bin/sh";
        return test_support::RunToEnd(std::move(start));
    }
};

TEST_F(OutputFaultTest, AFullDiskFailsEachCommand) {
    StartHost();
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"cadjobs", L"list"},
                                                {L"cadjobs", L"--help"},
                                                {L"controller_cli", L"--help"},
                                                {L"controller_cli", L"-s", L"7"},
                                                {L"controller_cli", platform::ToNativeText(JobsFile("wait"))},
                                                {L"cadjobs", L"watch"},
                                                {L"cadjobs", L"wait", L"1"},
                                                {L"cadjobs", L"cancel", L"--all"},
                                                {L"cadjobs", L"host", L"stop"}}) {
        EXPECT_EQ(ExitCodeOnFullDisk(FrontEndProcess(arguments)), 2) << text::ToUtf8(arguments[1]);
    }
    EXPECT_EQ(ExitCodeOnFullDisk(Host({L"--help"})), 2);
    EXPECT_EQ(ExitCodeOnFullDisk(Host({L"--version"})), 2);
}

TEST_F(OutputFaultTest, AMissingStandardOutputIsSaidSo) {
    StartHost();
    const Ending list = WithoutOutput(FrontEndProcess({L"cadjobs", L"list"}));
    EXPECT_EQ(list.exitCode, 2);
    EXPECT_EQ(list.output, "cadjobs: Standard output cannot be written: Bad file descriptor\n");
    const Ending help = WithoutOutput(Host({L"--help"}));
    EXPECT_EQ(help.exitCode, 2);
    EXPECT_EQ(help.output, "controller_host: standard output cannot be written: Bad file descriptor\n");
}

TEST_F(OutputFaultTest, AWaitEndsWithItsReaderThoughNothingChanges) {
    StartHost();
    ASSERT_EQ(test_support::RunToEnd(
                  FrontEndProcess({L"controller_cli", platform::ToNativeText(JobsFile("print hello\nwait"))}))
                  .exitCode,
              0);
    for (const std::vector<std::wstring>& arguments : std::vector<std::vector<std::wstring>>{
             {L"cadjobs", L"watch"}, {L"cadjobs", L"wait", L"1"}, {L"cadjobs", L"log", L"1", L"--follow"}}) {
        std::optional<platform::OutputPipe> pipe(std::in_place);
        ASSERT_TRUE(pipe->Open());
        platform::ProcessStart start = FrontEndProcess(arguments);
        start.output = pipe->WriteEnd();
        platform::OwnedHandle process;
        ASSERT_TRUE(platform::StartProcess(start, process));
        pipe->CloseWriteEnd();
        ASSERT_TRUE(test_support::ReadUntil(*pipe, arguments[1] == L"log" ? "hello" : "Job 1 Running"));
        pipe.reset();
        ASSERT_TRUE(test_support::WaitUntilSignalled(process.Get()));
        EXPECT_EQ(platform::ExitCode(process.Get()), 141) << text::ToUtf8(arguments[1]);
    }
}

} // namespace

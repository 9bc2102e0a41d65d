#include "platform/processes/Process.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

using platform::ErrorKind;
using platform::OwnedHandle;
using platform::ProcessStart;
using test_support::Ending;
using test_support::ReadUntil;
using test_support::RunToEnd;
using test_support::TestProcess;
using test_support::WaitUntilSignalled;

namespace {

std::string Echoed(const std::vector<std::wstring>& arguments) {
    std::vector<std::wstring> all{L"echo"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return RunToEnd(TestProcess(all)).output;
}

ErrorKind StartFails(const ProcessStart& start) {
    OwnedHandle process;
    const platform::Error result = platform::StartProcess(start, process);
    EXPECT_FALSE(process);
    return result.kind;
}

} // namespace

TEST(ProcessTest, ACurrentDirectoryMayBeLongerThanTheOldLimitOfWindows) {
    const TemporaryDirectory directory;
    std::wstring longDirectory = directory.Path();
    while (longDirectory.size() < 400) {
        longDirectory += L"\\a folder with quite a long name of its own";
    }
    ASSERT_TRUE(platform::EnsureDirectory(longDirectory));
    ProcessStart start = TestProcess({L"print-folder"});
    start.currentDirectory = longDirectory;
    const Ending ending = RunToEnd(start);
    EXPECT_EQ(ending.exitCode, 0);
    // Windows uses another name.
    const std::wstring printed = text::FromUtf8(ending.output.substr(0, ending.output.find_first_of("\r\n")));
    EXPECT_EQ(platform::IdentityOf(printed), platform::IdentityOf(longDirectory)) << ending.output;
    EXPECT_TRUE(platform::IdentityOf(longDirectory).has_value());
}

TEST(ProcessTest, AProcessThatEndsTellsItsExitCode) {
    EXPECT_EQ(RunToEnd(TestProcess({L"exit", L"0"})).exitCode, 0);
    EXPECT_EQ(RunToEnd(TestProcess({L"exit", L"7"})).exitCode, 7);
}

TEST(ProcessTest, TheExitCodeStaysUntilTheHandleIsClosed) {
    OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(TestProcess({L"exit", L"42"}), process));
    ASSERT_TRUE(WaitUntilSignalled(process.Get()));
    EXPECT_FALSE(platform::IsProcessRunning(process.Get()));
    EXPECT_EQ(platform::ExitCode(process.Get()), 42);
    EXPECT_EQ(platform::ExitCode(process.Get()), 42);
}

TEST(ProcessTest, ARunningProcessHasNoExitCode) {
    // It runs until this program ends.
    const OwnedHandle own = platform::OpenSelf();
    ProcessStart start = TestProcess({L"wait-for", platform::InheritedHandleText(own.Get())});
    start.inherited = {own.Get()};
    OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(start, process));
    EXPECT_TRUE(platform::IsProcessRunning(process.Get()));
    EXPECT_EQ(platform::ExitCode(process.Get()), std::nullopt);
    EXPECT_NE(platform::ProcessNumber(process.Get()), 0U);
    EXPECT_NE(platform::ProcessNumber(process.Get()), platform::OwnProcessNumber());
}

TEST(ProcessTest, AnExitCodeIsPutIntoWords) {
    EXPECT_EQ(platform::ExitCodeText(0), L"exit code 0");
    EXPECT_EQ(platform::ExitCodeText(3), L"exit code 3");
}

TEST(ProcessTest, ACrashIsTheSystemsOwnExitCode) {
    EXPECT_FALSE(platform::IsCrash(0));
    EXPECT_FALSE(platform::IsCrash(3));
    EXPECT_FALSE(platform::IsCrash(-1));
    // Signal 11 on Linux, an access violation on Windows: each system has its own.
    EXPECT_NE(platform::IsCrash(139), platform::IsCrash(static_cast<std::int32_t>(0xC0000005)));
}

TEST(ProcessTest, WhatIsNoHandleHasNoExitCode) {
    EXPECT_EQ(platform::ExitCode(nullptr), std::nullopt);
}

TEST(ProcessTest, ArgumentsArriveAsTheyWereGiven) {
    EXPECT_EQ(Echoed({L"plain", L"two words", L"", L"tab\there"}), "[plain]\n[two words]\n[]\n[tab\there]\n");
    EXPECT_EQ(Echoed({L"say \"yes\"", L"\"", L"'single'", L"back\\slash"}),
              "[say \"yes\"]\n[\"]\n['single']\n[back\\slash]\n");
    EXPECT_EQ(Echoed({L"C:\\folder\\", L"C:\\two words\\", L"\\\\", L"a\\\\\"b", L"\\\" \\"}),
              "[C:\\folder\\]\n[C:\\two words\\]\n[\\\\]\n[a\\\\\"b]\n[\\\" \\]\n");
    EXPECT_EQ(Echoed({L"%PATH%", L"$HOME", L"a&b|c>d", L"*", L"-x", L"^"}),
              "[%PATH%]\n[$HOME]\n[a&b|c>d]\n[*]\n[-x]\n[^]\n");
    EXPECT_EQ(Echoed({L"\u00fc\u4e2d", L"line\nbreak", text::FromUtf8("\xF0\x9F\x98\x80")}),
              "[\xC3\xBC\xE4\xB8\xAD]\n[line\nbreak]\n[\xF0\x9F\x98\x80]\n");
}

TEST(ProcessTest, BothStreamsGoToTheOutput) {
    const Ending ending = RunToEnd(TestProcess({L"print-to-both-streams"}));
    EXPECT_NE(ending.output.find("out\n"), std::string::npos);
    EXPECT_NE(ending.output.find("error\n"), std::string::npos);
}

TEST(ProcessTest, StandardErrorCanHaveAPlaceOfItsOwn) {
    platform::OutputPipe output;
    platform::OutputPipe errors;
    ASSERT_TRUE(output.Open());
    ASSERT_TRUE(errors.Open());
    platform::ProcessStart start = TestProcess({L"print-to-both-streams"});
    start.output = output.WriteEnd();
    platform::OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(start, errors.WriteEnd(), process));
    output.CloseWriteEnd();
    errors.CloseWriteEnd();
    EXPECT_EQ(test_support::ReadToEnd(output), "out\n");
    EXPECT_EQ(test_support::ReadToEnd(errors), "error\n");
}

TEST(ProcessTest, AProcessRunsInItsCurrentDirectory) {
    ProcessStart start = TestProcess({L"print-folder"});
    start.currentDirectory = platform::ProgramDirectory();
    EXPECT_EQ(RunToEnd(start).output, text::ToUtf8(platform::ToNativeText(platform::ProgramDirectory())) + "\n");
}

TEST(ProcessTest, VariablesAreSetAndRemovedAndTheRestIsHandedDown) {
    ProcessStart start = TestProcess({L"print-variable", L"CONTROLLER_TEST_VARIABLE"});
    start.environment = {{L"CONTROLLER_TEST_VARIABLE", L"one = \u00fc"}};
    EXPECT_EQ(RunToEnd(start).output, "one = \xC3\xBC\n");

    ProcessStart without = TestProcess({L"print-variable", L"PATH"});
    EXPECT_NE(RunToEnd(without).output, "(not set)\n");
    without.environment = {{L"PATH", std::nullopt}};
    EXPECT_EQ(RunToEnd(without).output, "(not set)\n");
}

TEST(ProcessTest, ABareNameIsLookedUpInPathOnly) {
    ProcessStart start = TestProcess({L"exit", L"3"});
    start.program = L"test_process";
    start.searchPath = true;
    start.currentDirectory = platform::ProgramDirectory();
    EXPECT_EQ(StartFails(start), ErrorKind::NotFound);
}

TEST(ProcessTest, ABatchFileIsNoProgram) {
    const TemporaryDirectory directory;
    for (const wchar_t* const name : {L"harmless.bat", L"harmless.CMD", L"harmless.exe.bat"}) {
        WriteTextFile(directory / name, "echo started\r\n");
        ProcessStart start;
        start.program = directory / name;
        EXPECT_NE(StartFails(start), ErrorKind::None);
    }
}

TEST(ProcessTest, WhatCannotBeStartedSaysWhy) {
    ProcessStart start;
    start.program = test_support::ProgramPath(L"no_such_program");
    EXPECT_EQ(StartFails(start), ErrorKind::NotFound);
    start.program = L"relative\\program.exe";
    EXPECT_EQ(StartFails(start), ErrorKind::NotAbsolute);
    start.program = L"";
    EXPECT_EQ(StartFails(start), ErrorKind::NotAbsolute);

    start = TestProcess({L"exit", std::wstring(L"0\0000", 3)});
    EXPECT_EQ(StartFails(start), ErrorKind::NotSupported);
    start = TestProcess({L"exit", L"0"});
    start.environment = {{L"A=B", L"c"}};
    EXPECT_EQ(StartFails(start), ErrorKind::NotSupported);
    start = TestProcess({L"exit", L"0"});
    start.currentDirectory = platform::ResolveAgainst(platform::ProgramDirectory(), L"no_such_folder");
    EXPECT_NE(StartFails(start), ErrorKind::None);
}

TEST(ProcessTest, AChildGetsOnlyTheHandlesThatAreNamed) {
    // The child has its own handles, with small numbers: the last of many handles has a number that the child does not
    // use.
    std::vector<OwnedHandle> many(300);
    std::generate(many.begin(), many.end(), platform::OpenSelf);
    const OwnedHandle& own = many.back();
    ASSERT_TRUE(own);
    ProcessStart start = TestProcess({L"print-is-open", platform::InheritedHandleText(own.Get())});
    EXPECT_EQ(RunToEnd(start).output, "closed\n");
    start.inherited = {own.Get()};
    EXPECT_EQ(RunToEnd(start).output, "open\n");
    start.inherited = {own.Get(), own.Get()};
    EXPECT_EQ(RunToEnd(start).output, "open\n");
}

TEST(ProcessTest, ATextThatIsNoInheritedHandleGivesNone) {
    for (const wchar_t* const text :
         {L"", L"0x", L"0x0", L"12", L"0xzz", L"0x1f4 ", L"0x123456789abcdef01", L"-0x1", L"0x7ffffff0", L"0x\u00fc"}) {
        EXPECT_FALSE(platform::TakeInheritedHandle(text)) << text::ToUtf8(text);
    }
}

TEST(ProcessTest, AChildNoticesThatItsParentEnded) {
    platform::OutputPipe life;
    ASSERT_TRUE(life.Open());
    ProcessStart start = TestProcess({L"leave-a-watcher", platform::InheritedHandleText(life.WriteEnd())});
    start.inherited = {life.WriteEnd()};
    EXPECT_EQ(RunToEnd(start).exitCode, 0);
    life.CloseWriteEnd();
    EXPECT_EQ(test_support::ReadToEnd(life), "");
}

using platform::FindProgram;

namespace {

/// Sets PATH for a test, and restores it afterwards.
class ProcessTest_Search : public testing::Test {
protected:
    ~ProcessTest_Search() override { platform::SetEnvironment(L"PATH", before); }
    static void SetPath(const std::wstring& path) { platform::SetEnvironment(L"PATH", path); }
    static std::wstring Programs() { return platform::ToNativeText(platform::ProgramDirectory()); }

    const std::wstring before = platform::GetEnvironment(L"PATH").value_or(L"");
    const std::wstring separator = std::wstring(1, platform::pathListSeparator);
};

} // namespace

TEST_F(ProcessTest_Search, AProgramIsFoundInADirectoryOfPath) {
    SetPath(platform::ToNativeText(platform::TemporaryDirectory()) + separator + Programs());
    EXPECT_EQ(FindProgram(L"test_process"), test_support::ProgramPath(L"test_process"));
}

TEST_F(ProcessTest_Search, TheCurrentDirectoryIsNotSearched) {
    SetPath(L"." + separator + separator + L"bin");
    EXPECT_EQ(FindProgram(L"test_process"), std::nullopt);
    SetPath(L"");
    EXPECT_EQ(FindProgram(L"test_process"), std::nullopt);
}

TEST_F(ProcessTest_Search, OnlyABareNameIsLookedUp) {
    SetPath(Programs());
    EXPECT_EQ(FindProgram(L""), std::nullopt);
    EXPECT_EQ(FindProgram(L"..\\bin\\test_process"), std::nullopt);
    EXPECT_EQ(FindProgram(L"../bin/test_process"), std::nullopt);
    EXPECT_EQ(FindProgram(L"."), std::nullopt);
    EXPECT_EQ(FindProgram(L"no_such_program"), std::nullopt);
}

TEST_F(ProcessTest_Search, ADirectoryIsNoProgram) {
    EXPECT_FALSE(platform::IsProgramFile(platform::ProgramDirectory()));
    EXPECT_TRUE(platform::IsProgramFile(test_support::ProgramPath(L"test_process")));
    EXPECT_FALSE(platform::IsProgramFile(test_support::ProgramPath(L"test_process") + std::wstring(1, L'\0')));
}

#include "platform/processes/ProgramSearch.h"

#include <gtest/gtest.h>

#include "kit/TestProcess.h"
#include "platform/files/Directories.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

using platform::FindProgram;

namespace {

/// Sets PATH for a test, and restores it afterwards.
class ProgramSearchTest : public testing::Test {
protected:
    ~ProgramSearchTest() override { platform::SetEnvironment(L"PATH", before); }
    static void SetPath(const std::wstring& path) { platform::SetEnvironment(L"PATH", path); }
    static std::wstring Programs() { return platform::ToNativeText(platform::ProgramDirectory()); }

    const std::wstring before = platform::GetEnvironment(L"PATH").value_or(L"");
    const std::wstring separator = std::wstring(1, platform::pathListSeparator);
};

} // namespace

TEST_F(ProgramSearchTest, AProgramIsFoundInADirectoryOfPath) {
    SetPath(platform::ToNativeText(platform::TemporaryDirectory()) + separator + Programs());
    EXPECT_EQ(FindProgram(L"test_process"), test_support::ProgramPath(L"test_process"));
}

TEST_F(ProgramSearchTest, TheCurrentDirectoryIsNotSearched) {
    SetPath(L"." + separator + separator + L"bin");
    EXPECT_EQ(FindProgram(L"test_process"), std::nullopt);
    SetPath(L"");
    EXPECT_EQ(FindProgram(L"test_process"), std::nullopt);
}

TEST_F(ProgramSearchTest, OnlyABareNameIsLookedUp) {
    SetPath(Programs());
    EXPECT_EQ(FindProgram(L""), std::nullopt);
    EXPECT_EQ(FindProgram(L"..\\bin\\test_process"), std::nullopt);
    EXPECT_EQ(FindProgram(L"../bin/test_process"), std::nullopt);
    EXPECT_EQ(FindProgram(L"."), std::nullopt);
    EXPECT_EQ(FindProgram(L"no_such_program"), std::nullopt);
}

TEST_F(ProgramSearchTest, ADirectoryIsNoProgram) {
    EXPECT_FALSE(platform::IsProgramFile(platform::ProgramDirectory()));
    EXPECT_TRUE(platform::IsProgramFile(test_support::ProgramPath(L"test_process")));
    EXPECT_FALSE(platform::IsProgramFile(test_support::ProgramPath(L"test_process") + std::wstring(1, L'\0')));
}

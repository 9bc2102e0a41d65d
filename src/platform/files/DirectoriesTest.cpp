#include "platform/files/Directories.h"

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace {

/// Sets a variable for one test.
class ScopedVariable {
public:
    ScopedVariable(const std::wstring& variable, const std::wstring& value)
        : name(variable), previous(platform::GetEnvironment(variable).value_or(L"")) {
        platform::SetEnvironment(name, value);
    }
    ~ScopedVariable() { platform::SetEnvironment(name, previous); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::wstring name;
    std::wstring previous;
};

std::wstring Root() {
    return OnWindows() ? L"C:" : L"";
}

TEST(DirectoriesTest, TheUsersDirectoriesAreTakenFromTheEnvironment) {
    const ScopedVariable configuration(OnWindows() ? L"APPDATA" : L"XDG_CONFIG_HOME", Root() + L"/my/settings/");
    const ScopedVariable data(OnWindows() ? L"LOCALAPPDATA" : L"XDG_DATA_HOME", Root() + L"/my/data");
    EXPECT_EQ(platform::UserConfigurationDirectory(), Root() + L"\\my\\settings");
    EXPECT_EQ(platform::UserDataDirectory(), Root() + L"\\my\\data");
}

TEST(DirectoriesTest, ARelativeValueIsIgnored) {
    const ScopedVariable home(L"HOME", L"/home/somebody");
    const ScopedVariable configuration(OnWindows() ? L"APPDATA" : L"XDG_CONFIG_HOME", L"relative");
    const ScopedVariable data(OnWindows() ? L"LOCALAPPDATA" : L"XDG_DATA_HOME", L"relative");
    EXPECT_TRUE(platform::IsAbsolute(platform::UserConfigurationDirectory()));
    EXPECT_TRUE(platform::IsAbsolute(platform::UserDataDirectory()));
}

TEST(DirectoriesTest, WithoutVariablesTheyStandBelowTheHomeDirectory) {
    if (OnWindows()) {
        GTEST_SKIP() << "the system knows these folders here";
    }
    const ScopedVariable home(L"HOME", L"/home/somebody");
    const ScopedVariable configuration(L"XDG_CONFIG_HOME", L"");
    const ScopedVariable data(L"XDG_DATA_HOME", L"");
    EXPECT_EQ(platform::UserConfigurationDirectory(), L"\\home\\somebody\\.config");
    EXPECT_EQ(platform::UserDataDirectory(), L"\\home\\somebody\\.local\\share");
}

TEST(DirectoriesTest, WithoutAHomeDirectoryTheAccountSaysIt) {
    const ScopedVariable home(L"HOME", L"");
    const ScopedVariable configuration(OnWindows() ? L"APPDATA" : L"XDG_CONFIG_HOME", L"");
    EXPECT_TRUE(platform::IsAbsolute(platform::UserConfigurationDirectory()));
}

TEST(DirectoriesTest, TheDirectoriesOfThisProcessExist) {
    for (const std::wstring& directory :
         {platform::TemporaryDirectory(), platform::CurrentDirectory(), platform::ProgramDirectory()}) {
        EXPECT_TRUE(platform::IsAbsolute(directory)) << testing::PrintToString(directory);
        EXPECT_TRUE(platform::IsDirectory(directory)) << testing::PrintToString(directory);
        EXPECT_EQ(directory.find(L'/'), std::wstring::npos) << testing::PrintToString(directory);
        EXPECT_NE(directory.back(), L'\\') << testing::PrintToString(directory);
    }
}

TEST(DirectoriesTest, TheProgramStandsInItsDirectory) {
    EXPECT_TRUE(
        platform::Exists(platform::ProgramDirectory() + L"\\platform_file_tests" + (OnWindows() ? L".exe" : L"")));
}

} // namespace

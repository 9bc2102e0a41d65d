#include "platform/system/Environment.h"

#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

using platform::GetEnvironment;
using platform::SetEnvironment;

class EnvironmentTest : public testing::Test {
protected:
    ~EnvironmentTest() override { SetEnvironment(name, L""); }

    const std::wstring name = L"CONTROLLER_ENVIRONMENT_TEST";
};

TEST_F(EnvironmentTest, AVariableIsSetChangedAndRemoved) {
    EXPECT_EQ(GetEnvironment(name), std::nullopt);
    SetEnvironment(name, L"one");
    EXPECT_EQ(GetEnvironment(name), L"one");
    SetEnvironment(name, L"two");
    EXPECT_EQ(GetEnvironment(name), L"two");
    SetEnvironment(name, L"");
    EXPECT_EQ(GetEnvironment(name), std::nullopt);
}

TEST_F(EnvironmentTest, ValuesKeepEveryCharacter) {
    for (const std::wstring& value :
         {std::wstring(L" a=b;c "), std::wstring(L"Gr\u00F6\u00DFe \u65E5\u672C"), std::wstring(5000, L'x')}) {
        SetEnvironment(name, value);
        EXPECT_EQ(GetEnvironment(name), value);
    }
}

TEST_F(EnvironmentTest, TheRuntimeSeesWhatWasSet) {
    SetEnvironment(name, L"value");
    const char* const seen = std::getenv("CONTROLLER_ENVIRONMENT_TEST");
    ASSERT_NE(seen, nullptr);
    EXPECT_STREQ(seen, "value");
}

TEST_F(EnvironmentTest, WhatCannotBeANameIsNeverSet) {
    for (const std::wstring& wrong : {std::wstring(), std::wstring(L"A=B"), name + std::wstring(1, L'\0') + L"x"}) {
        SetEnvironment(wrong, L"value");
        EXPECT_EQ(GetEnvironment(wrong), std::nullopt);
    }
    EXPECT_EQ(GetEnvironment(name), std::nullopt);
}

using platform::ProgramArguments;

TEST(EnvironmentTest_Arguments, TheProgramsOwnNameIsLeftOut) {
    const std::vector<std::string> own = testing::internal::GetArgvs();
    std::vector<const char*> values;
    std::vector<std::wstring> expected;
    for (const std::string& argument : own) {
        values.push_back(argument.c_str());
        expected.push_back(text::FromUtf8(argument));
    }
    expected.erase(expected.begin());
    EXPECT_EQ(ProgramArguments(static_cast<int>(values.size()), values.data()), expected);
}

TEST(EnvironmentTest_Arguments, ArgumentsAreUtf8OnLinux) {
    if (OnWindows()) {
        GTEST_SKIP() << "the system gives them wide here";
    }
    const char* const values[] = {"program", "Gr\xC3\xB6\xC3\x9F", "", "\xFF"};
    const auto arguments = ProgramArguments(4, values);
    EXPECT_THAT(arguments, testing::ElementsAre(L"Gr\u00F6\u00DF", L"", text::FromUtf8("\xFF")));
    EXPECT_TRUE(ProgramArguments(0, values).empty());
}

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

TEST(EnvironmentTest_Directories, TheUsersDirectoriesAreTakenFromTheEnvironment) {
    const ScopedVariable configuration(OnWindows() ? L"APPDATA" : L"XDG_CONFIG_HOME", Root() + L"/my/settings/");
    const ScopedVariable data(OnWindows() ? L"LOCALAPPDATA" : L"XDG_DATA_HOME", Root() + L"/my/data");
    EXPECT_EQ(platform::UserConfigurationDirectory(), Root() + L"\\my\\settings");
    EXPECT_EQ(platform::UserDataDirectory(), Root() + L"\\my\\data");
}

TEST(EnvironmentTest_Directories, ARelativeValueIsIgnored) {
    const ScopedVariable home(L"HOME", L"/home/somebody");
    const ScopedVariable configuration(OnWindows() ? L"APPDATA" : L"XDG_CONFIG_HOME", L"relative");
    const ScopedVariable data(OnWindows() ? L"LOCALAPPDATA" : L"XDG_DATA_HOME", L"relative");
    EXPECT_TRUE(platform::IsAbsolute(platform::UserConfigurationDirectory()));
    EXPECT_TRUE(platform::IsAbsolute(platform::UserDataDirectory()));
}

TEST(EnvironmentTest_Directories, WithoutVariablesTheyStandBelowTheHomeDirectory) {
    if (OnWindows()) {
        GTEST_SKIP() << "the system knows these folders here";
    }
    const ScopedVariable home(L"HOME", L"/home/somebody");
    const ScopedVariable configuration(L"XDG_CONFIG_HOME", L"");
    const ScopedVariable data(L"XDG_DATA_HOME", L"");
    EXPECT_EQ(platform::UserConfigurationDirectory(), L"\\home\\somebody\\.config");
    EXPECT_EQ(platform::UserDataDirectory(), L"\\home\\somebody\\.local\\share");
}

TEST(EnvironmentTest_Directories, WithoutAHomeDirectoryTheAccountSaysIt) {
    const ScopedVariable home(L"HOME", L"");
    const ScopedVariable configuration(OnWindows() ? L"APPDATA" : L"XDG_CONFIG_HOME", L"");
    EXPECT_TRUE(platform::IsAbsolute(platform::UserConfigurationDirectory()));
}

TEST(EnvironmentTest_Directories, TheDirectoriesOfThisProcessExist) {
    for (const std::wstring& directory :
         {platform::TemporaryDirectory(), platform::CurrentDirectory(), platform::ProgramDirectory()}) {
        EXPECT_TRUE(platform::IsAbsolute(directory)) << testing::PrintToString(directory);
        EXPECT_TRUE(platform::IsDirectory(directory)) << testing::PrintToString(directory);
        EXPECT_EQ(directory.find(L'/'), std::wstring::npos) << testing::PrintToString(directory);
        EXPECT_NE(directory.back(), L'\\') << testing::PrintToString(directory);
    }
}

TEST(EnvironmentTest_Directories, TheProgramStandsInItsDirectory) {
    EXPECT_TRUE(
        platform::Exists(platform::ProgramDirectory() + L"\\platform_file_tests" + (OnWindows() ? L".exe" : L"")));
}

} // namespace

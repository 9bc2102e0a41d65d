#include "platform/system/Installation.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace {

using platform::moduleExtension;
using platform::programExtension;

struct Layout {
    const char* name;
    /// The directory of the libraries.
    const wchar_t* libraries;
    /// From there.
    const wchar_t* plugins;
};

class InstallationTest : public testing::TestWithParam<Layout> {
protected:
    std::wstring Libraries() const { return directory / GetParam().libraries; }
    std::wstring Plugins() const { return platform::ResolveAgainst(Libraries(), GetParam().plugins); }

    /// The path of a new file of the installation.
    std::wstring Install(const std::wstring& relativePath) const {
        WriteTextFile(directory / relativePath, "");
        return directory / relativePath;
    }

    const TemporaryDirectory directory;
};

TEST_P(InstallationTest, ALibraryFindsProgramsThatUsersDoNotStart) {
    const std::wstring program = Install(std::wstring(L"libexec\\common_controller\\runner") + programExtension);
    EXPECT_EQ(platform::InstalledProgram(L"runner", Libraries()), program);
    EXPECT_EQ(platform::InstalledProgram(L"runner", Plugins()), program);
}

TEST_P(InstallationTest, ALibraryFindsPlugins) {
    const std::wstring plugin = Plugins() + L"\\local" + moduleExtension;
    WriteTextFile(plugin, "");
    EXPECT_EQ(platform::InstalledPlugin(L"local", Libraries()), plugin);
}

TEST_P(InstallationTest, ALibraryFindsSharedFiles) {
    const std::wstring file = Install(L"share\\common_controller\\strings.json");
    EXPECT_EQ(platform::InstalledData(L"strings.json", Libraries()), file);
    EXPECT_EQ(platform::InstalledData(L"strings.json", directory / L"libexec\\common_controller"), file);
}

TEST_P(InstallationTest, WhatIsBesideTheLibraryComesFirst) {
    Install(std::wstring(L"libexec\\common_controller\\runner") + programExtension);
    const std::wstring beside = Libraries() + L"\\runner" + programExtension;
    WriteTextFile(beside, "");
    EXPECT_EQ(platform::InstalledProgram(L"runner", Libraries()), beside);
}

INSTANTIATE_TEST_SUITE_P(Layouts, InstallationTest,
                         testing::Values(Layout{"Libraries", L"lib", L"common_controller\\plugins"},
                                         Layout{"Multiarch", L"lib\\x86_64-linux-gnu", L"common_controller\\plugins"},
                                         Layout{"Programs", L"bin", L"..\\lib\\common_controller\\plugins"}),
                         [](const auto& tested) { return tested.param.name; });

TEST(InstallationTest_Missing, WhatIsNowhereIsExpectedBesideTheLibrary) {
    const TemporaryDirectory directory;
    EXPECT_EQ(platform::InstalledProgram(L"runner", directory / L"lib"),
              directory / (std::wstring(L"lib\\runner") + programExtension));
    EXPECT_EQ(platform::InstalledPlugin(L"local", directory / L"lib"),
              directory / (std::wstring(L"lib\\local") + moduleExtension));
    EXPECT_EQ(platform::InstalledData(L"strings.json", directory / L"lib"),
              directory / L"share\\common_controller\\strings.json");
}

TEST(InstallationTest_Own, CodeInAProgramIsInTheDirectoryOfTheProgram) {
    EXPECT_EQ(platform::OwnDirectory(), platform::ProgramDirectory());
}

} // namespace

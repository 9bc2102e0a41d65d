#include "platform/system/SharedLibrary.h"

#include <gtest/gtest.h>

#include "platform/files/Directories.h"
#include "platform/files/NativePath.h"
#include "support/TemporaryFolder.h"
#include "support/TestProcess.h"
#include "text/Text.h"

/// Where modules and what they need are found, each time in a process of its own.
namespace {

const std::wstring moduleFile = text::FromUtf8(CHAIN_MODULE_FILE);
const std::wstring moduleFolder = platform::ProgramFolder() + L"\\chain_module";
const std::wstring libraryFolder = platform::ProgramFolder() + L"\\chain_libraries";
const std::wstring modulePath = moduleFolder + L"\\" + moduleFile;

using Folders = std::vector<std::wstring>;

/// What the process prints that loads `module` and asks it; `command` says how. The system looks in `searched` too.
std::string Load(const std::wstring& command, const std::wstring& module, const Folders& directories,
                 const Folders& searched = {}) {
    std::vector<std::wstring> arguments{command, module};
    arguments.insert(arguments.end(), directories.begin(), directories.end());
    platform::ProcessStart start = test_support::TestProcess(arguments);
    std::wstring list;
    for (const std::wstring& folder : searched) {
        list += platform::ToNativeText(folder) + platform::pathListSeparator;
    }
    if (!list.empty()) {
        list.pop_back();
        start.environment = {{L"PATH", list}, {L"LD_LIBRARY_PATH", list}};
    }
    return test_support::RunToEnd(start).output;
}

void Copy(const std::wstring& from, const TemporaryFolder& folder, const std::wstring& file) {
    WriteTextFile(folder / file, ReadTextFile(from + L"\\" + file));
}

constexpr auto works = "Answer: 42\n";

} // namespace

TEST(ModuleSearchTest, ABareNameIsLookedForWhereTheSystemLooks) {
    EXPECT_EQ(Load(L"load-module", moduleFile, {}, {moduleFolder, libraryFolder}), works);
}

TEST(ModuleSearchTest, WhatAModuleNeedsIsLookedForWhereTheSystemLooks) {
    EXPECT_EQ(Load(L"load-module", modulePath, {}, {libraryFolder}), works);
}

TEST(ModuleSearchTest, AModuleThatLacksALibraryIsNotLoadedAndTheSystemSaysWhy) {
    const std::string output = Load(L"load-module", modulePath, {});
    EXPECT_TRUE(output.starts_with("not loaded: ")) << output;
    EXPECT_GT(output.size(), std::string("not loaded: \n").size());
}

TEST(ModuleSearchTest, ANarrowedProgramFindsTheLibrariesOfNamedDirectories) {
    const TemporaryFolder empty;
    EXPECT_EQ(Load(L"load-module-narrowed", modulePath, {empty.Path(), libraryFolder}), works);
    const std::string without = Load(L"load-module-narrowed", modulePath, {empty.Path()});
    EXPECT_TRUE(without.starts_with("not loaded: ")) << without;
}

TEST(ModuleSearchTest, ANarrowedProgramFindsTheLibrariesBesideTheModule) {
    const TemporaryFolder folder;
    Copy(moduleFolder, folder, moduleFile);
    Copy(libraryFolder, folder, text::FromUtf8(CHAIN_LIBRARY_FILE));
    Copy(libraryFolder, folder, text::FromUtf8(CHAIN_END_FILE));
    EXPECT_EQ(Load(L"load-module-narrowed", folder / moduleFile, {}), works);
}

TEST(ModuleSearchTest, WhatIsNoLibraryInANamedDirectoryIsLeftToTheSystem) {
    const TemporaryFolder folder;
    WriteTextFile(folder / text::FromUtf8(CHAIN_LIBRARY_FILE), "no library");
    const std::string output = Load(L"load-module-narrowed", modulePath, {folder.Path()});
    EXPECT_TRUE(output.starts_with("not loaded: ")) << output;
}

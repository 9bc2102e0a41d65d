#include "platform/system/SharedLibrary.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

/// The search for modules and their libraries, in a separate process each.
namespace {

const std::wstring moduleFile = text::FromUtf8(CHAIN_MODULE_FILE);
const std::wstring moduleDirectory = platform::ProgramDirectory() + L"\\chain_module";
const std::wstring libraryDirectory = platform::ProgramDirectory() + L"\\chain_libraries";
const std::wstring modulePath = moduleDirectory + L"\\" + moduleFile;

using Directories = std::vector<std::wstring>;

/// The output of the process that loads `module` with `command` and calls it. The system also searches `searched`.
std::string Load(const std::wstring& command, const std::wstring& module, const Directories& directories,
                 const Directories& searched = {}) {
    std::vector<std::wstring> arguments{command, module};
    arguments.insert(arguments.end(), directories.begin(), directories.end());
    platform::ProcessStart start = test_support::TestProcess(arguments);
    std::wstring list;
    for (const std::wstring& directory : searched) {
        list += platform::ToNativeText(directory) + platform::pathListSeparator;
    }
    if (!list.empty()) {
        list.pop_back();
        start.environment = {{L"PATH", list}, {L"LD_LIBRARY_PATH", list}};
    }
    return test_support::RunToEnd(start).output;
}

void Copy(const std::wstring& from, const TemporaryDirectory& directory, const std::wstring& file) {
    WriteTextFile(directory / file, ReadTextFile(from + L"\\" + file));
}

constexpr auto works = "Answer: 42\n";

} // namespace

TEST(ModuleSearchTest, ABareNameIsLookedForWhereTheSystemLooks) {
    EXPECT_EQ(Load(L"load-module", moduleFile, {}, {moduleDirectory, libraryDirectory}), works);
}

TEST(ModuleSearchTest, WhatAModuleNeedsIsLookedForWhereTheSystemLooks) {
    EXPECT_EQ(Load(L"load-module", modulePath, {}, {libraryDirectory}), works);
}

TEST(ModuleSearchTest, AModuleThatLacksALibraryIsNotLoadedAndTheSystemSaysWhy) {
    const std::string output = Load(L"load-module", modulePath, {});
    EXPECT_TRUE(output.starts_with("not loaded: ")) << output;
    EXPECT_GT(output.size(), std::string("not loaded: \n").size());
}

TEST(ModuleSearchTest, ANarrowedProgramFindsTheLibrariesOfNamedDirectories) {
    const TemporaryDirectory empty;
    EXPECT_EQ(Load(L"load-module-narrowed", modulePath, {empty.Path(), libraryDirectory}), works);
    const std::string without = Load(L"load-module-narrowed", modulePath, {empty.Path()});
    EXPECT_TRUE(without.starts_with("not loaded: ")) << without;
}

TEST(ModuleSearchTest, ANarrowedProgramFindsTheLibrariesBesideTheModule) {
    const TemporaryDirectory directory;
    Copy(moduleDirectory, directory, moduleFile);
    Copy(libraryDirectory, directory, text::FromUtf8(CHAIN_LIBRARY_FILE));
    Copy(libraryDirectory, directory, text::FromUtf8(CHAIN_END_FILE));
    EXPECT_EQ(Load(L"load-module-narrowed", directory / moduleFile, {}), works);
}

TEST(ModuleSearchTest, WhatIsNoLibraryInANamedDirectoryIsLeftToTheSystem) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / text::FromUtf8(CHAIN_LIBRARY_FILE), "no library");
    const std::string output = Load(L"load-module-narrowed", modulePath, {directory.Path()});
    EXPECT_TRUE(output.starts_with("not loaded: ")) << output;
}

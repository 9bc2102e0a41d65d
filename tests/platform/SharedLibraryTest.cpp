#include "platform/SharedLibrary.h"

#include <gtest/gtest.h>

#include "platform/Directories.h"
#include "platform/Environment.h"
#include "platform/Export.h"
#include "platform/NativePath.h"
#include "platform/SystemHelpers.h"
#include "platform/Text.h"
#include "support/TemporaryFolder.h"

// An export of the program itself, which a null module must not lead to.
extern "C" CONTROLLER_API int ExportOfTheProgram();

int ExportOfTheProgram() {
    return 1;
}

namespace {

using platform::FindExport;
using platform::FreeModule;
using platform::LoadModule;

std::wstring ModulePath() {
    return platform::ProgramFolder() + L"/" + platform::FromUtf8(TEST_MODULE_FILE);
}

TEST(SharedLibraryTest, AnExportOfALoadedModuleCanBeCalled) {
    void* const module = LoadModule(ModulePath());
    ASSERT_NE(module, nullptr);
    const auto answer = reinterpret_cast<int (*)()>(FindExport(module, "Answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(FindExport(module, "NoSuchExport"), nullptr);
    FreeModule(module);
}

TEST(SharedLibraryTest, EveryLoadTakesAReference) {
    void* const first = LoadModule(ModulePath());
    void* const second = LoadModule(ModulePath());
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, second);
    FreeModule(first);
    const auto answer = reinterpret_cast<int (*)()>(FindExport(second, "Answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    FreeModule(second);
}

TEST(SharedLibraryTest, WhatIsNoModuleIsNotLoaded) {
    const TemporaryFolder folder;
    WriteTextFile(folder / L"text.dll", "not a module");
    EXPECT_EQ(LoadModule(folder / L"text.dll"), nullptr);
    EXPECT_EQ(LoadModule(folder / L"missing.dll"), nullptr);
    EXPECT_EQ(LoadModule(folder.Path()), nullptr);
    EXPECT_EQ(LoadModule(ModulePath() + std::wstring(1, L'\0')), nullptr);
    EXPECT_EQ(LoadModule(L""), nullptr);
}

TEST(SharedLibraryTest, ABareNameMeansTheProgramsFolder) {
    void* const module = LoadModule(platform::FromUtf8(TEST_MODULE_FILE));
    EXPECT_NE(module, nullptr);
    FreeModule(module);
}

TEST(SharedLibraryTest, ABareNameIsNotLookedForAnywhereElse) {
    const TemporaryFolder folder;
    const std::wstring name = std::wstring(L"of_another_folder") + platform::moduleExtension;
    WriteTextFile(folder / name, ReadTextFile(ModulePath()));
    const std::wstring before = platform::GetEnvironment(L"PATH").value_or(L"");
    platform::SetEnvironment(L"PATH", platform::ToNativeText(folder.Path()) + platform::pathListSeparator + before);
    const ScopedCurrentFolder current(folder.Path());
    EXPECT_EQ(LoadModule(name), nullptr);
    platform::SetEnvironment(L"PATH", before);
    void* const module = LoadModule(L".\\" + name);
    EXPECT_NE(module, nullptr);
    FreeModule(module);
}

TEST(SharedLibraryTest, ANullModuleHasNoExports) {
    EXPECT_EQ(FindExport(nullptr, "ExportOfTheProgram"), nullptr);
    EXPECT_EQ(FindExport(nullptr, "malloc"), nullptr);
    FreeModule(nullptr);
}

} // namespace

#include "platform/system/SharedLibrary.h"

#include <gtest/gtest.h>

#include "CommonControllerLib/Export.h"
#include "kit/TemporaryDirectory.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

// An export of the program itself, which a null module must not resolve.
extern "C" CONTROLLER_API int ExportOfTheProgram();

int ExportOfTheProgram() {
    return 1;
}

namespace {

using platform::FindExport;
using platform::FreeModule;
using platform::LoadModule;

std::wstring ModulePath() {
    return platform::ProgramDirectory() + L"/" + text::FromUtf8(TEST_MODULE_FILE);
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
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"text.dll", "not a module");
    EXPECT_EQ(LoadModule(directory / L"text.dll"), nullptr);
    EXPECT_EQ(LoadModule(directory / L"missing.dll"), nullptr);
    EXPECT_EQ(LoadModule(directory.Path()), nullptr);
    EXPECT_EQ(LoadModule(ModulePath() + std::wstring(1, L'\0')), nullptr);
    EXPECT_EQ(LoadModule(L""), nullptr);
}

TEST(SharedLibraryTest, TheSystemSaysWhyAModuleCannotBeLoaded) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"text.dll", "not a module");
    for (const std::wstring& path : {directory / L"text.dll", directory / L"missing.dll", std::wstring()}) {
        EXPECT_FALSE(platform::LoadProblem(path).empty());
    }
    EXPECT_EQ(platform::LoadProblem(ModulePath()), L"");
}

TEST(SharedLibraryTest, ANullModuleHasNoExports) {
    EXPECT_EQ(FindExport(nullptr, "ExportOfTheProgram"), nullptr);
    EXPECT_EQ(FindExport(nullptr, "malloc"), nullptr);
    FreeModule(nullptr);
}

} // namespace

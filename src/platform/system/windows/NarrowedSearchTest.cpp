#include "platform/system/SharedLibrary.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

/// Loading by bare name, as other libraries do.
TEST(NarrowedSearchTest, AfterNarrowingTheCurrentDirectoryIsNotSearched) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"of_the_current_folder.dll",
                  ReadTextFile(platform::ProgramDirectory() + L"\\" + text::FromUtf8(TEST_MODULE_FILE)));
    const ScopedCurrentDirectory current(directory.Path());
    const HMODULE found = LoadLibraryW(L"of_the_current_folder.dll");
    ASSERT_NE(found, nullptr);
    FreeLibrary(found);
    platform::HardenLibrarySearch();
    EXPECT_EQ(LoadLibraryW(L"of_the_current_folder.dll"), nullptr);
    const HMODULE besideTheProgram = LoadLibraryW(text::FromUtf8(TEST_MODULE_FILE).c_str());
    EXPECT_NE(besideTheProgram, nullptr);
    FreeLibrary(besideTheProgram);
}

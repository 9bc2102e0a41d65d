#include "platform/system/SharedLibrary.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/SystemHelpers.h"
#include "platform/files/Directories.h"
#include "support/TemporaryFolder.h"
#include "text/Text.h"

/// What other libraries ask the system for by its bare name.
TEST(NarrowedSearchTest, AfterNarrowingTheCurrentFolderIsNotSearched) {
    const TemporaryFolder folder;
    WriteTextFile(folder / L"of_the_current_folder.dll",
                  ReadTextFile(platform::ProgramFolder() + L"\\" + text::FromUtf8(TEST_MODULE_FILE)));
    const ScopedCurrentFolder current(folder.Path());
    const HMODULE found = LoadLibraryW(L"of_the_current_folder.dll");
    ASSERT_NE(found, nullptr);
    FreeLibrary(found);
    platform::HardenLibrarySearch();
    EXPECT_EQ(LoadLibraryW(L"of_the_current_folder.dll"), nullptr);
    const HMODULE besideTheProgram = LoadLibraryW(text::FromUtf8(TEST_MODULE_FILE).c_str());
    EXPECT_NE(besideTheProgram, nullptr);
    FreeLibrary(besideTheProgram);
}

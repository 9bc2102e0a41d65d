#include "controller_cli/ScratchFolder.h"

#include "ScopedTemporaryFolder.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"
#include "support/TemporaryFolder.h"

#include <optional>

#include <gtest/gtest.h>

namespace {

using controller_cli::ScratchFolder;

/// The folder for temporary files is one of the test's own.
class ScratchFolderTest : public testing::Test {
protected:
    std::vector<std::wstring> Left() const {
        std::vector<platform::FolderEntry> entries;
        EXPECT_FALSE(platform::ListFolder(temporary.Path(), entries));
        std::vector<std::wstring> names;
        for (const platform::FolderEntry& entry : entries) {
            names.push_back(entry.name);
        }
        return names;
    }

    const TemporaryFolder temporary;
    const ScopedTemporaryFolder inUse{temporary.Path()};
};

TEST_F(ScratchFolderTest, IsThereForOneCommandAndGoesWithAllItHolds) {
    std::optional<ScratchFolder> scratch(std::in_place);
    EXPECT_EQ(platform::ParentFolder(scratch->Path()), temporary.Path());
    WriteTextFile(scratch->Path() + L"\\lines.txt", "1,Queued");
    scratch.reset();
    EXPECT_TRUE(Left().empty());
}

TEST_F(ScratchFolderTest, WhatAProcessThatWasKilledHasLeftIsRemovedByTheNext) {
    WriteTextFile(temporary / L"controller_cli-1\\lines.txt", "1,Queued");
    WriteTextFile(temporary / L"controller_cli-1\\lock", "");
    ASSERT_FALSE(platform::CreateFolder(temporary / L"controller_cli-2"));
    { const ScratchFolder scratch; }
    EXPECT_TRUE(Left().empty());
}

TEST_F(ScratchFolderTest, ThoseInUseStay) {
    const ScratchFolder one;
    WriteTextFile(one.Path() + L"\\lines.txt", "1,Queued");
    const ScratchFolder other;
    EXPECT_EQ(Left().size(), 2U);
    EXPECT_EQ(ReadTextFile(one.Path() + L"\\lines.txt"), "1,Queued");
}

TEST_F(ScratchFolderTest, OtherPeoplesFilesStay) {
    WriteTextFile(temporary / L"controller_cli-3", "a file");
    ASSERT_FALSE(platform::CreateFolder(temporary / L"other"));
    { const ScratchFolder scratch; }
    EXPECT_EQ(Left(), (std::vector<std::wstring>{L"controller_cli-3", L"other"}));
}

} // namespace

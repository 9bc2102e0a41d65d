#include "platform/files/FilePermissions.h"

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using platform::IsReplaceableByOthers;
using platform::IsWorldWritable;

class FilePermissionsTest : public testing::Test {
protected:
    FilePermissionsTest() { WriteTextFile(file, "content"); }

    const TemporaryDirectory directory;
    const std::wstring inner = directory / L"inner";
    const std::wstring file = inner + L"\\settings.json";
};

TEST_F(FilePermissionsTest, WhatAUserMakesIsHisOwn) {
    EXPECT_FALSE(IsWorldWritable(file));
    EXPECT_FALSE(IsReplaceableByOthers(inner));
}

TEST_F(FilePermissionsTest, AFileThatEverybodyMayWriteIsAnybodys) {
    LetEverybodyWrite(file);
    EXPECT_TRUE(IsWorldWritable(file));
}

TEST_F(FilePermissionsTest, AFileInADirectoryThatEverybodyMayWriteIsAnybodys) {
    LetEverybodyWrite(inner);
    EXPECT_TRUE(IsWorldWritable(file));
    EXPECT_TRUE(IsReplaceableByOthers(inner));
}

TEST_F(FilePermissionsTest, WhatIsMissingIsNobodys) {
    EXPECT_FALSE(IsWorldWritable(directory / L"missing"));
    EXPECT_FALSE(IsReplaceableByOthers(directory / L"missing"));
}

TEST_F(FilePermissionsTest, InAStickyDirectoryEverybodyKeepsHisOwn) {
    if (OnWindows()) {
        GTEST_SKIP() << "no sticky folders here";
    }
    SetPermissions(inner, 01777);
    EXPECT_FALSE(IsWorldWritable(file));
    EXPECT_FALSE(IsReplaceableByOthers(inner));
}

TEST_F(FilePermissionsTest, InADirectoryOfAnotherUserNothingIsSafe) {
    if (!GiveAway(inner)) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    EXPECT_TRUE(IsReplaceableByOthers(inner));
}

} // namespace

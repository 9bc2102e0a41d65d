#include "platform/files/OtherUsers.h"

#include <gtest/gtest.h>

#include "platform/files/FileSystem.h"
#include "platform/SystemHelpers.h"
#include "support/TemporaryFolder.h"

namespace {

using platform::AnybodyMayChange;
using platform::OthersMayExchangeIn;

class OtherUsersTest : public testing::Test {
protected:
    OtherUsersTest() { WriteTextFile(file, "content"); }

    const TemporaryFolder folder;
    const std::wstring inner = folder / L"inner";
    const std::wstring file = inner + L"\\settings.json";
};

TEST_F(OtherUsersTest, WhatAUserMakesIsHisOwn) {
    EXPECT_FALSE(AnybodyMayChange(file));
    EXPECT_FALSE(OthersMayExchangeIn(inner));
}

TEST_F(OtherUsersTest, AFileThatEverybodyMayWriteIsAnybodys) {
    LetEverybodyWrite(file);
    EXPECT_TRUE(AnybodyMayChange(file));
}

TEST_F(OtherUsersTest, AFileInAFolderThatEverybodyMayWriteIsAnybodys) {
    LetEverybodyWrite(inner);
    EXPECT_TRUE(AnybodyMayChange(file));
    EXPECT_TRUE(OthersMayExchangeIn(inner));
}

TEST_F(OtherUsersTest, WhatIsMissingIsNobodys) {
    EXPECT_FALSE(AnybodyMayChange(folder / L"missing"));
    EXPECT_FALSE(OthersMayExchangeIn(folder / L"missing"));
}

TEST_F(OtherUsersTest, InAStickyFolderEverybodyKeepsHisOwn) {
    if (OnWindows()) {
        GTEST_SKIP() << "no sticky folders here";
    }
    SetPermissions(inner, 01777);
    EXPECT_FALSE(AnybodyMayChange(file));
    EXPECT_FALSE(OthersMayExchangeIn(inner));
}

TEST_F(OtherUsersTest, InAFolderOfAnotherUserNothingIsSafe) {
    if (!GiveAway(inner)) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    EXPECT_TRUE(OthersMayExchangeIn(inner));
}

} // namespace

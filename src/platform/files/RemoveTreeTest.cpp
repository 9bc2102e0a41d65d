#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"

namespace {

using platform::ErrorKind;
using platform::Exists;
using platform::RemoveTree;

class RemoveTreeTest : public testing::Test {
protected:
    TemporaryDirectory directory;
    const std::wstring tree = directory / L"tree";
};

std::wstring Chain(int levels) {
    std::wstring chain;
    for (int level = 0; level < levels; ++level) {
        chain += L"\\dd";
    }
    return chain;
}

TEST_F(RemoveTreeTest, RemovesADirectoryWithAllItHolds) {
    WriteTextFile(tree + L"\\a\\b\\c.txt", "x");
    WriteTextFile(tree + L"\\a\\.hidden", "x");
    WriteTextFile(tree + L"\\d.txt", "x");
    ASSERT_TRUE(platform::CreateNewDirectory(tree + L"\\empty\\empty"));
    WriteTextFile(directory / L"beside", "kept");
    EXPECT_TRUE(RemoveTree(tree));
    EXPECT_FALSE(Exists(tree));
    EXPECT_TRUE(Exists(directory / L"beside"));
}

TEST_F(RemoveTreeTest, ManySiblingsGoToo) {
    for (int i = 0; i < 300; ++i) {
        ASSERT_TRUE(platform::CreateNewDirectory(tree + L"\\folder" + std::to_wstring(i)));
        ASSERT_TRUE(platform::CreateEmptyFile(tree + L"\\file" + std::to_wstring(i)));
    }
    EXPECT_TRUE(RemoveTree(tree + L"\\"));
    EXPECT_FALSE(Exists(tree));
}

TEST_F(RemoveTreeTest, OnlyARealDirectoryIsRemoved) {
    WriteTextFile(directory / L"file", "kept");
    EXPECT_EQ(RemoveTree(directory / L"missing").kind, ErrorKind::NotFound);
    EXPECT_EQ(RemoveTree(directory / L"file").kind, ErrorKind::NotSupported);
    EXPECT_EQ(RemoveTree(L"").kind, ErrorKind::NotFound);
    EXPECT_TRUE(Exists(directory / L"file"));
}

TEST_F(RemoveTreeTest, ALinkIsRefused) {
    WriteTextFile(tree + L"\\file", "kept");
    if (!MakeLink(tree, directory / L"link")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    EXPECT_EQ(RemoveTree(directory / L"link").kind, ErrorKind::NotSupported);
    EXPECT_EQ(RemoveTree(directory / L"link\\").kind, ErrorKind::NotSupported);
    EXPECT_TRUE(Exists(tree + L"\\file"));
    EXPECT_TRUE(Exists(directory / L"link"));
}

TEST_F(RemoveTreeTest, LinksInsideAreNotFollowed) {
    WriteTextFile(directory / L"outside\\file", "kept");
    ASSERT_TRUE(platform::CreateNewDirectory(tree + L"\\sub"));
    if (!MakeLink(directory / L"outside", tree + L"\\sub\\link")) {
        GTEST_SKIP() << "no symbolic links here";
    }
    ASSERT_TRUE(MakeLink(directory / L"outside\\file", tree + L"\\link"));
    ASSERT_TRUE(MakeLink(directory / L"nothing", tree + L"\\broken"));
    EXPECT_TRUE(RemoveTree(tree));
    EXPECT_FALSE(Exists(tree));
    EXPECT_EQ(ReadTextFile(directory / L"outside\\file"), "kept");
}

TEST_F(RemoveTreeTest, ReadOnlyEntriesAreRemoved) {
    WriteTextFile(tree + L"\\folder\\file", "x");
    MakeReadOnly(tree + L"\\folder\\file");
    MakeReadOnly(tree + L"\\folder");
    MakeReadOnly(tree);
    EXPECT_TRUE(RemoveTree(tree));
    EXPECT_FALSE(Exists(tree));
}

TEST_F(RemoveTreeTest, DepthCostsNeitherStackNorOpenFiles) {
    // In two parts, because such a long path cannot be passed to the system at once.
    const int levels = OnWindows() ? 200 : 1000;
    ASSERT_TRUE(platform::CreateNewDirectory(tree + Chain(levels)));
    ASSERT_TRUE(platform::CreateNewDirectory(directory / L"second" + Chain(levels)));
    ASSERT_TRUE(platform::RenameFile(directory / L"second", tree + Chain(levels) + L"\\second"));
    const ScopedOpenFileLimit limit(32);
    EXPECT_TRUE(RemoveTree(tree));
    EXPECT_FALSE(Exists(tree));
}

TEST_F(RemoveTreeTest, WhatCannotBeRemovedIsLeftAndTheRestGoes) {
    WriteTextFile(tree + L"\\a\\file", "x");
    WriteTextFile(tree + L"\\held\\file", "kept");
    WriteTextFile(tree + L"\\z\\file", "x");
    {
        const FileHold hold(tree + L"\\held\\file");
        EXPECT_NE(static_cast<bool>(RemoveTree(tree)), FileHold::Protects());
        EXPECT_EQ(Exists(tree + L"\\held\\file"), FileHold::Protects());
        EXPECT_FALSE(Exists(tree + L"\\a"));
        EXPECT_FALSE(Exists(tree + L"\\z"));
    }
    EXPECT_EQ(RemoveTree(tree).kind, FileHold::Protects() ? ErrorKind::None : ErrorKind::NotFound);
    EXPECT_FALSE(Exists(tree));
}

} // namespace

#include "platform/files/NativePath.h"

#include <gtest/gtest.h>

namespace {

using platform::FileName;
using platform::IsAbsolute;
using platform::ParentDirectory;
using platform::ResolveAgainst;

bool OnWindows() {
    return platform::nativeSeparator == L'\\';
}

TEST(NativePathTest, NativeTextHasTheSeparatorOfThisSystem) {
    EXPECT_EQ(platform::ToNativeText(L"\\in\\a/b.stl"), OnWindows() ? L"\\in\\a\\b.stl" : L"/in/a/b.stl");
    EXPECT_EQ(platform::pathListSeparator, OnWindows() ? L';' : L':');
}

TEST(NativePathTest, AbsolutePathsOfThisSystem) {
    const struct {
        const wchar_t* path;
        bool onLinux;
        bool onWindows;
    } table[] = {
        {L"", false, false},
        {L"a", false, false},
        {L"a\\b", false, false},
        {L".", false, false},
        {L"\\tmp\\x", true, false},
        {L"/tmp/x", true, false},
        {L"/", true, false},
        {L"C:\\x", false, true},
        {L"c:/x", false, true},
        {L"C:\\", false, true},
        {L"C:x", false, false},
        {L"C:", false, false},
        {L"1:\\x", false, false},
        {L"\\\\server\\share", true, true},
        {L"//server/share/x", true, true},
        {L"\\\\server", true, false},
        {L"\\\\", true, false},
        {L"\\\\?\\C:\\x", true, true},
    };
    for (const auto& row : table) {
        EXPECT_EQ(IsAbsolute(row.path), OnWindows() ? row.onWindows : row.onLinux) << testing::PrintToString(row.path);
    }
}

TEST(NativePathTest, ResolvingJoinsAndTidiesTheText) {
    const std::wstring root = OnWindows() ? L"C:" : L"";
    const struct {
        const wchar_t* path;
        const wchar_t* expected;
    } table[] = {
        {L"a.stl", L"\\work\\in\\a.stl"},
        {L"", L"\\work\\in"},
        {L".", L"\\work\\in"},
        {L"..", L"\\work"},
        {L"../out", L"\\work\\out"},
        {L"..\\..\\..\\..\\x", L"\\x"},
        {L"..\\..", L"\\"},
        {L"a\\\\b//c\\", L"\\work\\in\\a\\b\\c"},
        {L".\\a\\.\\b\\..\\c", L"\\work\\in\\a\\c"},
        {L"\\abs\\x", L"\\abs\\x"},
        {L"/abs/../x/", L"\\x"},
        {L"...", L"\\work\\in\\..."},
    };
    for (const auto& row : table) {
        EXPECT_EQ(ResolveAgainst(root + L"\\work/in", row.path), root + row.expected)
            << testing::PrintToString(row.path);
    }
}

TEST(NativePathTest, ResolvingKeepsTheRootsOfWindows) {
    if (!OnWindows()) {
        EXPECT_EQ(ResolveAgainst(L"\\work", L"C:\\x"), L"\\work\\C:\\x"); // a plain name on this system
        return;
    }
    EXPECT_EQ(ResolveAgainst(L"C:\\work", L"D:/in/../x"), L"D:\\x");
    EXPECT_EQ(ResolveAgainst(L"C:\\work", L"C:x"), L"C:\\work\\x");
    EXPECT_EQ(ResolveAgainst(L"C:\\work", L"D:x"), L"D:\\x");
    EXPECT_EQ(ResolveAgainst(L"\\\\server\\share\\work", L"..\\..\\x"), L"\\\\server\\share\\x");
    EXPECT_EQ(ResolveAgainst(L"\\\\server\\share\\work", L"\\x"), L"\\\\server\\share\\x");
    EXPECT_EQ(ResolveAgainst(L"C:\\", L"//server/share/x"), L"\\\\server\\share\\x");
}

TEST(NativePathTest, ParentAndNameTakeAPathApart) {
    const struct {
        const wchar_t* path;
        const wchar_t* parent;
        const wchar_t* name;
    } table[] = {
        {L"a", L"", L"a"},
        {L"", L"", L""},
        {L"a\\b", L"a", L"b"},
        {L"a/b\\c.rb", L"a/b", L"c.rb"},
        {L"a\\\\b", L"a", L"b"},
        {L"a\\b\\", L"a\\b", L""},
        {L"\\x", L"\\", L"x"},
        {L"/", L"", L""},
        {L"C:\\a\\b", L"C:\\a", L"b"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(ParentDirectory(row.path), row.parent) << testing::PrintToString(row.path);
        EXPECT_EQ(FileName(row.path), row.name) << testing::PrintToString(row.path);
    }
}

TEST(NativePathTest, TheParentOfWhatStandsInADriveOrShareIsItsRoot) {
    EXPECT_EQ(ParentDirectory(L"C:\\a"), OnWindows() ? L"C:\\" : L"C:");
    EXPECT_EQ(ParentDirectory(L"C:\\"), OnWindows() ? L"" : L"C:");
    EXPECT_EQ(ParentDirectory(L"\\\\server\\share\\x"), OnWindows() ? L"\\\\server\\share\\" : L"\\\\server\\share");
}

TEST(NativePathTest, NamesAreComparedAsThisSystemDoes) {
    EXPECT_TRUE(platform::SameName(L"mesh.rb", L"mesh.rb"));
    EXPECT_FALSE(platform::SameName(L"mesh.rb", L"mesh.r"));
    EXPECT_EQ(platform::SameName(L"Mesh.RB", L"mesh.rb"), OnWindows());
    EXPECT_EQ(platform::SameName(L"\u00C9", L"\u00E9"), OnWindows());
    EXPECT_TRUE(platform::SameName(L"", L""));
}

} // namespace

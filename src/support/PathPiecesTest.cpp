#include "support/PathPieces.h"

#include <gtest/gtest.h>

namespace {

PathPieces Pieces(const std::wstring& drive, const std::wstring& directory, const std::wstring& name,
                  const std::wstring& extension) {
    return {drive, directory, name, extension};
}

TEST(PathPiecesTest, SplitsIntoDriveDirectoryNameAndExtension) {
    EXPECT_EQ(SplitPath(L"C:\\s\\mesh.rb"), Pieces(L"C:", L"\\s\\", L"mesh", L".rb"));
    EXPECT_EQ(SplitPath(L"C:mesh.rb"), Pieces(L"C:", L"", L"mesh", L".rb"));
    EXPECT_EQ(SplitPath(L"mesh.rb"), Pieces(L"", L"", L"mesh", L".rb"));
    EXPECT_EQ(SplitPath(L"\\\\server\\share\\mesh.rb"), Pieces(L"", L"\\\\server\\share\\", L"mesh", L".rb"));
    EXPECT_EQ(SplitPath(L""), Pieces(L"", L"", L"", L""));
}

TEST(PathPiecesTest, EitherSeparatorCounts) {
    EXPECT_EQ(SplitPath(L"/s/a\\mesh.rb"), Pieces(L"", L"/s/a\\", L"mesh", L".rb"));
    EXPECT_EQ(SplitPath(L"\\s\\a/mesh.rb"), Pieces(L"", L"\\s\\a/", L"mesh", L".rb"));
}

TEST(PathPiecesTest, ExtensionBeginsAtTheLastDotOfTheName) {
    EXPECT_EQ(SplitPath(L"part.prt.3"), Pieces(L"", L"", L"part.prt", L".3"));
    EXPECT_EQ(SplitPath(L"a.b\\mesh"), Pieces(L"", L"a.b\\", L"mesh", L""));
    EXPECT_EQ(SplitPath(L"a\\.rb"), Pieces(L"", L"a\\", L"", L".rb"));
    EXPECT_EQ(SplitPath(L"mesh."), Pieces(L"", L"", L"mesh", L"."));
}

TEST(PathPiecesTest, PiecesOf255CharactersFit) {
    const std::wstring name(255, L'n');
    const std::wstring directory = std::wstring(254, L'd') + L"\\";
    const std::wstring extension = L"." + std::wstring(254, L'e');
    EXPECT_EQ(SplitPath(L"C:" + directory + name + extension), Pieces(L"C:", directory, name, extension));
}

TEST(PathPiecesTest, OnePieceTooLongMakesAllEmpty) {
    const std::wstring longest(256, L'x');
    EXPECT_EQ(SplitPath(L"C:\\s\\" + longest + L".rb"), PathPieces());
    EXPECT_EQ(SplitPath(L"C:\\s\\mesh." + longest), PathPieces());
    EXPECT_EQ(SplitPath(L"C:\\" + longest + L"\\mesh.rb"), PathPieces());
}

} // namespace

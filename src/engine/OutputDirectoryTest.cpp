#include "engine/OutputDirectory.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using platform::Error;
using platform::ErrorKind;
using Names = std::vector<std::wstring>;

/// A disk on which other programs also create directories.
class OutputDirectoryTest : public testing::Test {
protected:
    DirectoryCalls Calls() {
        return {[this](const std::wstring& path) { return existing.contains(path); },
                [this](const std::wstring& path) { return Create(path); }};
    }

    Error Create(const std::wstring& path) {
        attempts.push_back(path);
        if (madeInBetween.contains(path)) {
            existing.insert(path);
        }
        return existing.insert(path).second ? Error{createError, 0} : Error{ErrorKind::AlreadyExists, 0};
    }

    std::set<std::wstring> existing;
    /// Directories that another program creates between check and creation.
    std::set<std::wstring> madeInBetween;
    ErrorKind createError = ErrorKind::None;
    Names attempts;
    std::wstring directory;
};

TEST_F(OutputDirectoryTest, TheFirstNameThatDoesNotExistIsMade) {
    existing = {L"a", L"a_1"};
    EXPECT_TRUE(MakeFreshDirectory(L"a", Calls(), directory));
    EXPECT_EQ(directory, L"a_2");
    EXPECT_EQ(attempts, Names{L"a_2"});
}

TEST_F(OutputDirectoryTest, ANameThatSomebodyTakesBetweenTheLookAndTheMakingIsTaken) {
    madeInBetween = {L"a", L"a_1"};
    EXPECT_TRUE(MakeFreshDirectory(L"a", Calls(), directory));
    EXPECT_EQ(directory, L"a_2");
    EXPECT_EQ(attempts, (Names{L"a", L"a_1", L"a_2"}));
}

TEST_F(OutputDirectoryTest, ADirectoryThatCannotBeMadeEndsTheSearch) {
    createError = ErrorKind::AccessDenied;
    EXPECT_EQ(MakeFreshDirectory(L"a", Calls(), directory).kind, ErrorKind::AccessDenied);
    EXPECT_EQ(directory, L"a");
    EXPECT_EQ(attempts, Names{L"a"});
}

TEST_F(OutputDirectoryTest, ANameThatIsTakenAndStillNotThereEndsTheSearch) {
    DirectoryCalls calls = Calls();
    calls.create = [](const std::wstring&) { return Error{ErrorKind::AlreadyExists, 0}; };
    EXPECT_EQ(MakeFreshDirectory(L"a", calls, directory).kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(directory, L"a");
}

TEST(OutputDirectoryTest_VersionSuffix, ExtensionThenNumberIsAVersionSuffix) {
    for (const wchar_t* path : {L"C:\\m\\part.prt.3", L"part.prt.12345678901234567890", L"..0", L"a..1", L".prt.3",
                                L"C:\\m.v\\part.3", L"part.1.2.3"}) {
        EXPECT_TRUE(HasVersionSuffix(path)) << path;
    }
}

TEST(OutputDirectoryTest_VersionSuffix, AnythingElseIsNone) {
    for (const wchar_t* path :
         {L"", L"3", L".3", L"part.3", L"part.prt", L"part.prt.", L"part.prt.3a", L"part.prt.a3", L"part.prt.-3",
          L"part.prt.3 ", L"part.prt3", L"part.prt.\u0663", L"pa\nrt.prt.3", L"pa\rrt.prt.3", L"part.prt.3\n"}) {
        EXPECT_FALSE(HasVersionSuffix(path)) << path;
    }
}

TEST(OutputDirectoryTest_VersionSuffix, LongPathsNeedNoStack) {
    const std::wstring longest(1'000'000, L'a');
    EXPECT_TRUE(HasVersionSuffix(longest + L".prt.3"));
    EXPECT_FALSE(HasVersionSuffix(longest));
}

} // namespace

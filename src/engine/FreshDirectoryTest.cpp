#include "engine/FreshDirectory.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using platform::Error;
using platform::ErrorKind;
using Names = std::vector<std::wstring>;

/// A disk on which other programs also create directories.
class FreshDirectoryTest : public testing::Test {
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

TEST_F(FreshDirectoryTest, TheFirstNameThatDoesNotExistIsMade) {
    existing = {L"a", L"a_1"};
    EXPECT_FALSE(MakeFreshDirectory(L"a", Calls(), directory));
    EXPECT_EQ(directory, L"a_2");
    EXPECT_EQ(attempts, Names{L"a_2"});
}

TEST_F(FreshDirectoryTest, ANameThatSomebodyTakesBetweenTheLookAndTheMakingIsTaken) {
    madeInBetween = {L"a", L"a_1"};
    EXPECT_FALSE(MakeFreshDirectory(L"a", Calls(), directory));
    EXPECT_EQ(directory, L"a_2");
    EXPECT_EQ(attempts, (Names{L"a", L"a_1", L"a_2"}));
}

TEST_F(FreshDirectoryTest, ADirectoryThatCannotBeMadeEndsTheSearch) {
    createError = ErrorKind::AccessDenied;
    EXPECT_EQ(MakeFreshDirectory(L"a", Calls(), directory).kind, ErrorKind::AccessDenied);
    EXPECT_EQ(directory, L"a");
    EXPECT_EQ(attempts, Names{L"a"});
}

TEST_F(FreshDirectoryTest, ANameThatIsTakenAndStillNotThereEndsTheSearch) {
    DirectoryCalls calls = Calls();
    calls.create = [](const std::wstring&) { return Error{ErrorKind::AlreadyExists, 0}; };
    EXPECT_EQ(MakeFreshDirectory(L"a", calls, directory).kind, ErrorKind::AlreadyExists);
    EXPECT_EQ(directory, L"a");
}

} // namespace

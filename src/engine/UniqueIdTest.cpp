#include "engine/UniqueId.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class UniqueIdTest : public testing::Test {
protected:
    /// Draws these numbers in order; unused ones stay in `numbers`.
    std::wstring Draw() {
        return DrawUniqueId([this] { return Next(); }, [this](const std::wstring& id) { return taken.contains(id); },
                            known);
    }

    std::uint32_t Next() {
        const std::uint32_t number = numbers.at(0);
        numbers.erase(numbers.begin());
        return number;
    }

    std::vector<std::uint32_t> numbers;
    std::set<std::wstring> taken;
    std::set<std::wstring> known;
};

TEST_F(UniqueIdTest, IdIsLowerCaseHexadecimalWithoutLeadingZeros) {
    numbers = {0x03f9a0c1, 0xFFFFFFFF, 0, 10};
    EXPECT_EQ(Draw(), L"3f9a0c1");
    EXPECT_EQ(Draw(), L"ffffffff");
    EXPECT_EQ(Draw(), L"0");
    EXPECT_EQ(Draw(), L"a");
}

TEST_F(UniqueIdTest, KnownIdIsDrawnAgain) {
    known = {L"1", L"2"};
    numbers = {1, 2, 3, 4};
    EXPECT_EQ(Draw(), L"3");
    EXPECT_EQ(numbers, std::vector<std::uint32_t>{4});
}

TEST_F(UniqueIdTest, IdThatIsTakenIsDrawnAgainAndStaysUnknown) {
    taken = {L"1"};
    numbers = {1, 2};
    EXPECT_EQ(Draw(), L"2");
    EXPECT_EQ(known, std::set<std::wstring>{L"2"});
}

TEST_F(UniqueIdTest, DrawnIdIsKnownFromThenOn) {
    numbers = {5, 5, 6};
    EXPECT_EQ(Draw(), L"5");
    EXPECT_EQ(Draw(), L"6");
}

} // namespace

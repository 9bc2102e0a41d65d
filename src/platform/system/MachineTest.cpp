#include "platform/system/Machine.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

TEST(MachineTest, MachineAndAccountHaveNames) {
    const std::wstring machine = platform::MachineName();
    const std::wstring account = platform::AccountName();
    EXPECT_FALSE(machine.empty());
    EXPECT_FALSE(account.empty());
    EXPECT_EQ((machine + account).find(L'\0'), std::wstring::npos);
}

TEST(MachineTest, PreferringLargePagesKeepsContentForAnySizeAndAlignment) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{5000}, (std::size_t{40} << 20) + 3}) {
        for (const std::size_t offset : {0U, 1U, 4096U}) {
            std::string text(offset + size + 1, 'x');
            platform::PreferLargePages(text.data() + offset, size);
            EXPECT_EQ(text.find_first_not_of('x'), std::string::npos) << size << ' ' << offset;
        }
    }
}

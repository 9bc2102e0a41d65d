#include "platform/system/Machine.h"

#include <gtest/gtest.h>

TEST(MachineTest, MachineAndAccountHaveNames) {
    const std::wstring machine = platform::MachineName();
    const std::wstring account = platform::AccountName();
    EXPECT_FALSE(machine.empty());
    EXPECT_FALSE(account.empty());
    EXPECT_EQ((machine + account).find(L'\0'), std::wstring::npos);
}

#include "platform/system/Environment.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

using platform::GetEnvironment;
using platform::SetEnvironment;

class EnvironmentTest : public testing::Test {
protected:
    ~EnvironmentTest() override { SetEnvironment(name, L""); }

    const std::wstring name = L"CONTROLLER_ENVIRONMENT_TEST";
};

TEST_F(EnvironmentTest, AVariableIsSetChangedAndRemoved) {
    EXPECT_EQ(GetEnvironment(name), std::nullopt);
    SetEnvironment(name, L"one");
    EXPECT_EQ(GetEnvironment(name), L"one");
    SetEnvironment(name, L"two");
    EXPECT_EQ(GetEnvironment(name), L"two");
    SetEnvironment(name, L"");
    EXPECT_EQ(GetEnvironment(name), std::nullopt);
}

TEST_F(EnvironmentTest, ValuesKeepEveryCharacter) {
    for (const std::wstring& value :
         {std::wstring(L" a=b;c "), std::wstring(L"Gr\u00F6\u00DFe \u65E5\u672C"), std::wstring(5000, L'x')}) {
        SetEnvironment(name, value);
        EXPECT_EQ(GetEnvironment(name), value);
    }
}

TEST_F(EnvironmentTest, TheRuntimeSeesWhatWasSet) {
    SetEnvironment(name, L"value");
    const char* const seen = std::getenv("CONTROLLER_ENVIRONMENT_TEST");
    ASSERT_NE(seen, nullptr);
    EXPECT_STREQ(seen, "value");
}

TEST_F(EnvironmentTest, WhatCannotBeANameIsNeverSet) {
    for (const std::wstring& wrong : {std::wstring(), std::wstring(L"A=B"), name + std::wstring(1, L'\0') + L"x"}) {
        SetEnvironment(wrong, L"value");
        EXPECT_EQ(GetEnvironment(wrong), std::nullopt);
    }
    EXPECT_EQ(GetEnvironment(name), std::nullopt);
}

} // namespace

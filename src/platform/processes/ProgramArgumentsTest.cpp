#include "platform/processes/ProgramArguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "text/Text.h"

namespace {

using platform::ProgramArguments;

TEST(ProgramArgumentsTest, TheProgramsOwnNameIsLeftOut) {
    const std::vector<std::string> own = testing::internal::GetArgvs();
    std::vector<const char*> values;
    std::vector<std::wstring> expected;
    for (const std::string& argument : own) {
        values.push_back(argument.c_str());
        expected.push_back(text::FromUtf8(argument));
    }
    expected.erase(expected.begin());
    EXPECT_EQ(ProgramArguments(static_cast<int>(values.size()), values.data()), expected);
}

TEST(ProgramArgumentsTest, ArgumentsAreUtf8OnLinux) {
    if (OnWindows()) {
        GTEST_SKIP() << "the system gives them wide here";
    }
    const char* const values[] = {"program", "Gr\xC3\xB6\xC3\x9F", "", "\xFF"};
    const auto arguments = ProgramArguments(4, values);
    EXPECT_THAT(arguments, testing::ElementsAre(L"Gr\u00F6\u00DF", L"", text::FromUtf8("\xFF")));
    EXPECT_TRUE(ProgramArguments(0, values).empty());
}

} // namespace

#include "cadjobs/command_line/Subcommands.h"

#include <set>

#include <gtest/gtest.h>

#include "kit/front_end/BuiltInTexts.h"
#include "text/Text.h"

namespace {

TEST(SubcommandsTest, EverySubcommandAndOptionHasItsText) {
    const front_end::Texts& texts = BuiltInTexts();
    for (const front_end::SubcommandSpec& spec : front_end::Subcommands()) {
        const std::wstring key = L"Subcommands/" + spec.Key();
        EXPECT_NE(texts.Get(key), key);
        for (const char* const option : spec.options) {
            const std::wstring optionKey = L"Options/" + text::FromUtf8(std::string(option).substr(2));
            EXPECT_NE(texts.Get(optionKey), optionKey);
            EXPECT_EQ(front_end::OptionNamed(option).LongName(), option);
        }
    }
}

TEST(SubcommandsTest, NoSubcommandHasTwoOptionsOfOneName) {
    for (const front_end::SubcommandSpec& spec : front_end::Subcommands()) {
        const std::set<std::string> distinct(spec.options.begin(), spec.options.end());
        EXPECT_EQ(distinct.size(), spec.options.size()) << spec.name;
    }
}

} // namespace

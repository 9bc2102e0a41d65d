#include "controller_cli/command_line/ShortOptionArguments.h"

#include "CommonControllerLib/CLIArgumentParser.h"

#include <gtest/gtest.h>

namespace {

using front_end::PrepareShortOptionArguments;
using Arguments = std::vector<std::wstring>;

TEST(ShortOptionArgumentsTest, WherePathsBeginWithASlashTheyAreNoOptions) {
    const std::vector<std::pair<Arguments, Arguments>> table = {
        {{L"/srv/x.json"}, {L"\"/srv/x.json\""}},
        {{L"/jobs"}, {L"\"/jobs\""}},
        {{L"/s.json"}, {L"\"/s.json\""}},
        {{L"/"}, {L"\"/\""}},
        {{L"/s7"}, {L"/s7"}},
        {{L"/c1,2"}, {L"/c1,2"}},
        {{L"/f", L"/i", L"x.json"}, {L"/f", L"/i", L"x.json"}},
        {{L"-i", L"/srv/x.json"}, {L"-i/srv/x.json"}},
        {{L"-i", L"/s7"}, {L"-i/s7"}},
        {{L"-i/srv/x.json"}, {L"-i/srv/x.json"}},
        {{L"-o", L"/out.txt", L"-l", L"/c.log", L"/srv/x.json"}, {L"-o/out.txt", L"-l/c.log", L"\"/srv/x.json\""}},
        {{L"-s", L"/srv/x"}, {L"-s", L"\"/srv/x\""}},
        {{L"x.json", L"-o", L"out.txt"}, {L"x.json", L"-o", L"out.txt"}},
        {{L"-i", L"-o", L"/a/b"}, {L"-i", L"-o/a/b"}},
        {{}, {}},
    };
    for (const auto& [arguments, prepared] : table) {
        EXPECT_EQ(PrepareShortOptionArguments(arguments, true), prepared);
        EXPECT_EQ(PrepareShortOptionArguments(arguments, false), arguments);
    }
}

TEST(ShortOptionArgumentsTest, WhatStandsBehindTwoDashesIsAPath) {
    for (const bool slashBeginsPaths : {true, false}) {
        CLIArgumentParser parser;
        ASSERT_TRUE(
            parser.Parse(PrepareShortOptionArguments({L"-f", L"-o", L"x", L"--", L"-i.json"}, slashBeginsPaths)));
        EXPECT_EQ(parser.GetJobFileName(), L"-i.json");
        EXPECT_EQ(parser.GetOutputFileName(), L"x");
        EXPECT_TRUE(parser.IsForceClientMode());
    }
    EXPECT_EQ(PrepareShortOptionArguments({L"--", L"--"}, true), Arguments{L"\"--\""});
    EXPECT_EQ(PrepareShortOptionArguments({L"-s1", L"--"}, false), Arguments{L"-s1"});
}

TEST(ShortOptionArgumentsTest, TheParserTakesSuchPaths) {
    CLIArgumentParser parser;
    ASSERT_TRUE(
        parser.Parse(PrepareShortOptionArguments({L"/srv/my jobs.json", L"-o", L"/out.txt", L"-l", L"/c.log"}, true)));
    EXPECT_EQ(parser.GetJobFileName(), L"/srv/my jobs.json");
    EXPECT_EQ(parser.GetOutputFileName(), L"/out.txt");
    EXPECT_EQ(parser.GetLogFileName(), L"/c.log");
}

} // namespace

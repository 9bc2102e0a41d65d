#include "controller_host/HostOptions.h"

#include <gtest/gtest.h>

namespace {

using Mode = HostOptions::Mode;

TEST(HostOptionsTest, NothingIsTheForeground) {
    EXPECT_EQ(ParseHostOptions({}).mode, Mode::Foreground);
}

TEST(HostOptionsTest, EachOptionIsTaken) {
    EXPECT_EQ(ParseHostOptions({L"--background"}).mode, Mode::Background);
    EXPECT_EQ(ParseHostOptions({L"--status"}).mode, Mode::Status);
    EXPECT_EQ(ParseHostOptions({L"--help"}).mode, Mode::Help);
    EXPECT_EQ(ParseHostOptions({L"--version"}).mode, Mode::Version);
    EXPECT_EQ(ParseHostOptions({L"--ready-event", L"17"}).readyEvent, L"17");
}

TEST(HostOptionsTest, WhatASupervisorRunsIsNoOption) {
    const HostOptions options = ParseHostOptions({L"--supervise-hook", L"1", L"--help"});
    EXPECT_EQ(options.mode, Mode::SuperviseHook);
    EXPECT_EQ(options.supervisedHook, (std::vector<std::wstring>{L"1", L"--help"}));
    EXPECT_EQ(ParseHostOptions({L"--status", L"--supervise-hook"}).mode, Mode::Wrong);
}

TEST(HostOptionsTest, AnythingElseIsNamedAsTheProblem) {
    for (const wchar_t* argument : {L"jobs.json", L"--Background", L"--ready-event", L""}) {
        const HostOptions options = ParseHostOptions({argument});
        EXPECT_EQ(options.mode, Mode::Wrong);
        EXPECT_EQ(options.problem, argument);
    }
}

} // namespace

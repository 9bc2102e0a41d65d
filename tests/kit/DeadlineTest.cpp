#include "kit/Deadline.h"

#include <gtest/gtest.h>

#include "kit/TestProcess.h"
#include "platform/processes/OutputPipe.h"
#include "platform/processes/Process.h"
#include "platform/system/Environment.h"

namespace {

constexpr const wchar_t* lifeVariable = L"CONTROLLER_TEST_LIFE";

/// This test program with the test that waits in vain. Living processes hold the write end of `life` open.
platform::ProcessStart ProgramThatWaitsInVain(platform::OutputPipe& life) {
    platform::ProcessStart start;
    start.program = test_support::ProgramPath(L"platform_process_tests");
    start.arguments = {L"--gtest_filter=DeadlineTest.DISABLED_WaitsInVain", L"--gtest_also_run_disabled_tests"};
    start.environment = {{lifeVariable, platform::InheritedHandleText(life.WriteEnd())}};
    start.inherited = {life.WriteEnd()};
    return start;
}

} // namespace

/// Run by the next test, in a separate program.
TEST(DeadlineTest, DISABLED_WaitsInVain) {
    const platform::OwnedHandle life =
        platform::TakeInheritedHandle(platform::GetEnvironment(lifeVariable).value_or(L""));
    ASSERT_TRUE(life);
    platform::ProcessStart start =
        test_support::TestProcess({L"have-family", platform::InheritedHandleText(life.Get())});
    platform::OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    start.output = pipe.WriteEnd();
    start.inherited = {life.Get()};
    platform::OwnedHandle family;
    ASSERT_TRUE(platform::StartProcess(start, family));
    ASSERT_TRUE(test_support::ReadUntil(pipe, "ready"));
    const test_support::Deadline deadline("what never comes", std::chrono::seconds(0));
    std::string more;
    pipe.Read(1, more);
    FAIL() << "The program outlived its deadline.";
}

TEST(DeadlineTest, WhatWasStartedEndsWithTheProgram) {
    platform::OutputPipe life;
    ASSERT_TRUE(life.Open());
    const test_support::Ending ending = test_support::RunToEnd(ProgramThatWaitsInVain(life));
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_NE(ending.output.find("Waited in vain for what never comes."), std::string::npos) << ending.output;
    life.CloseWriteEnd();
    EXPECT_EQ(test_support::ReadToEnd(life, "the family"), "");
}

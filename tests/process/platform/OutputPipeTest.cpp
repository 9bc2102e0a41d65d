#include "platform/processes/OutputPipe.h"

#include <gtest/gtest.h>

#include "kit/TestProcess.h"

using platform::OutputPipe;
using test_support::TestProcess;

TEST(OutputPipeTest, AClosedWriteEndIsTheEnd) {
    OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    EXPECT_NE(pipe.WriteEnd(), nullptr);
    pipe.CloseWriteEnd();
    EXPECT_EQ(pipe.WriteEnd(), nullptr);
    std::string bytes = "old";
    pipe.Read(10, bytes);
    EXPECT_EQ(bytes, "");
}

TEST(OutputPipeTest, APipeThatWasNotOpenedIsAtItsEnd) {
    OutputPipe pipe;
    std::string bytes = "old";
    pipe.Read(10, bytes);
    EXPECT_EQ(bytes, "");
}

TEST(OutputPipeTest, AReadGivesAtMostTheLimit) {
    OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    platform::ProcessStart start = TestProcess({L"echo", L"abcdef"});
    start.output = pipe.WriteEnd();
    platform::OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(start, process));
    pipe.CloseWriteEnd();
    std::string bytes;
    pipe.Read(3, bytes);
    EXPECT_EQ(bytes, "[ab");
    EXPECT_EQ(test_support::ReadToEnd(pipe), "cdef]\n");
}

TEST(OutputPipeTest, MuchOutputComesWhole) {
    const test_support::Ending ending = test_support::RunToEnd(TestProcess({L"print-lines", L"20000"}));
    EXPECT_EQ(ending.output.size(), 2'000'000U);
    EXPECT_EQ(ending.output.substr(ending.output.size() - 100, 11), "line 20000 ");
}

TEST(OutputPipeTest, WhatHasComeIsReadWithoutWaitingForTheEnd) {
    OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    std::string bytes = "old";
    pipe.ReadAvailable(100, bytes);
    EXPECT_EQ(bytes, "");
    platform::ProcessStart start = TestProcess({L"echo", L"abcdef"});
    start.output = pipe.WriteEnd();
    platform::OwnedHandle process;
    ASSERT_TRUE(platform::StartProcess(start, process));
    ASSERT_TRUE(test_support::WaitUntilSignalled(process.Get()));
    pipe.ReadAvailable(3, bytes);
    EXPECT_EQ(bytes, "[ab");
    pipe.ReadAvailable(100, bytes);
    EXPECT_EQ(bytes, "cdef]\n");
    pipe.ReadAvailable(100, bytes);
    EXPECT_EQ(bytes, "");
}

#include "platform/processes/ForeignProcess.h"

#include <gtest/gtest.h>

#include "platform/processes/Process.h"

namespace {

using platform::OpenProcess;
using platform::OwnProcessIdentity;
using platform::ProcessIdentity;

TEST(ForeignProcessTest, AProcessIsFoundByItsIdentity) {
    const ProcessIdentity own = OwnProcessIdentity();
    EXPECT_EQ(own.number, platform::OwnProcessNumber());
    EXPECT_NE(own.start, 0);
    const platform::OwnedHandle opened = OpenProcess(own);
    ASSERT_TRUE(opened);
    EXPECT_TRUE(platform::IsProcessRunning(opened.Get()));
    EXPECT_EQ(platform::ProcessNumber(opened.Get()), own.number);
}

TEST(ForeignProcessTest, AnotherProcessWithTheSameNumberIsNotTakenForIt) {
    ProcessIdentity earlier = OwnProcessIdentity();
    --earlier.start;
    EXPECT_FALSE(OpenProcess(earlier));
}

TEST(ForeignProcessTest, WhatIsNoProcessIsNotFound) {
    EXPECT_FALSE(OpenProcess({}));
    EXPECT_FALSE(OpenProcess({OwnProcessIdentity().number, 0}));
    EXPECT_FALSE(OpenProcess({0xffffffff, 1}));
}

} // namespace

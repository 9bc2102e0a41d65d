#include "formats/HostLock.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileLock.h"
#include "platform/processes/Process.h"

namespace {

using host_lock::FindHolder;
using host_lock::Holder;
using host_lock::OwnHolder;

/// A lock beside a job list, held by this process.
class HostLockTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(lock.Take(host_lock::FileFor(list))); }

    const TemporaryDirectory directory;
    const std::wstring list = directory / L"job_list.json";
    platform::FileLock lock;
};

TEST_F(HostLockTest, TheHolderIsFoundWithWhatItWrote) {
    Holder written = OwnHolder();
    written.transmitterName = L"other";
    written.place = L"/run/other.socket";
    written.isReady = true;
    ASSERT_TRUE(lock.Write(host_lock::Serialize(written)));
    Holder found;
    ASSERT_TRUE(FindHolder(list, found));
    EXPECT_EQ(found, written);
    EXPECT_TRUE(platform::IsProcessRunning(host_lock::OpenHolder(found).Get()));
}

TEST_F(HostLockTest, ALockThatNobodyHoldsHasNoHolderWhateverItSays) {
    ASSERT_TRUE(lock.Write(host_lock::Serialize(OwnHolder())));
    lock.Release();
    Holder found;
    EXPECT_FALSE(FindHolder(list, found));
}

TEST_F(HostLockTest, WithoutAFileThereIsNoHolder) {
    Holder found;
    EXPECT_FALSE(FindHolder(directory / L"other.json", found));
}

TEST_F(HostLockTest, AHolderThatHasNotWrittenYetIsNotTakenForTheDeadOneBeforeIt) {
    Holder dead = OwnHolder();
    --dead.processStart;
    for (const std::string& text :
         {host_lock::Serialize(dead), std::string(), std::string("{\"process\":"), std::string("4711"),
          std::string(R"({"process":-1,"processStart":1})"), std::string(70000, ' ')}) {
        ASSERT_TRUE(lock.Write(text));
        Holder found = OwnHolder();
        ASSERT_TRUE(FindHolder(list, found));
        EXPECT_EQ(found, Holder()) << text.substr(0, 40);
        EXPECT_FALSE(host_lock::OpenHolder(found));
    }
}

TEST_F(HostLockTest, AHolderIsDescribedWithWhatIsKnown) {
    Holder holder;
    EXPECT_EQ(host_lock::Describe(holder), L"");
    holder.process = 4711;
    EXPECT_EQ(host_lock::Describe(holder), L"process 4711");
    holder.since = 1709622489;
    holder.place = L"/run/default.socket";
    EXPECT_EQ(host_lock::Describe(holder), L"process 4711, since 2024-03-05 07:08:09 UTC, at /run/default.socket");
}

} // namespace

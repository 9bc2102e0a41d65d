#include "platform/processes/posix/ProcessFiles.h"

#include <algorithm>
#include <climits>

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

using namespace platform;

namespace {

/// The name of the calling thread for the life of this object.
class ThreadName {
public:
    explicit ThreadName(const char* name) {
        prctl(PR_GET_NAME, before);
        prctl(PR_SET_NAME, name);
    }
    ~ThreadName() { prctl(PR_SET_NAME, before); }
    ThreadName(const ThreadName&) = delete;
    ThreadName& operator=(const ThreadName&) = delete;

private:
    char before[16] = {};
};

TEST(ProcessFilesTest, AProcessIsDescribedWhateverItsName) {
    const ThreadName name("a) Z 7 (b\n");
    const ProcessStat stat(getpid());
    EXPECT_EQ(stat.Field(3), "R");
    EXPECT_EQ(stat.Parent(), getppid());
    EXPECT_GT(stat.Number(22), 0U);
}

TEST(ProcessFilesTest, AProcessThatDoesNotExistHasNoFields) {
    const ProcessStat stat(INT_MAX);
    EXPECT_EQ(stat.Field(3), "");
    EXPECT_EQ(stat.Field(50), "");
    EXPECT_EQ(stat.Parent(), 0);
    EXPECT_FALSE(ReadProcessFile(INT_MAX, "stat"));
}

TEST(ProcessFilesTest, FieldsThatTheSystemDoesNotKnowAreEmpty) {
    EXPECT_EQ(ProcessStat(getpid()).Field(1000), "");
}

TEST(ProcessFilesTest, ThisProcessIsListed) {
    const std::vector<pid_t> processes = ListProcesses();
    EXPECT_NE(std::ranges::find(processes, getpid()), processes.end());
}

} // namespace

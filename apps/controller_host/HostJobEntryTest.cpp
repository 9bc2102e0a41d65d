#include "controller_host/HostJobEntry.h"

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/ScriptedEngine.h"
#include "kit/doubles/ScriptedProcess.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Clock.h"

#include <gtest/gtest.h>

namespace {

/// A job whose attempt has run for 100 s.
class HostJobEntryTest : public testing::Test {
protected:
    JobListInfo Record() const {
        JobListInfo record{};
        record.id = L"a";
        record.status = JobStatus::Running;
        record.workDir = directory / L"work";
        return record;
    }

    ScriptedJobEntry<HostJobEntry> Job(const Scheduling& scheduling) {
        WriteTextFile(directory / L"work\\scenario.log", "");
        ScriptedJobEntry<HostJobEntry> job(Record(), QueueRecord{scheduling, 0});
        EXPECT_TRUE(job.OnEvaluateJobInputResult(process.Answer()));
        job.NoteStart(platform::Now() - 100);
        return job;
    }

    std::string StopRequest() const {
        const std::wstring path = directory / L"work\\killprocess";
        return platform::Exists(path) ? ReadTextFile(path) : "none";
    }

    const TemporaryDirectory directory;
    ScriptedProcess process;
};

TEST_F(HostJobEntryTest, AJobBeyondItsTimeLimitIsAskedToStopOnceAndToldWhy) {
    Scheduling limited;
    limited.timeLimit = 50;
    auto job = Job(limited);
    EXPECT_FALSE(job.OnCheckUpdate());
    EXPECT_EQ(StopRequest(), "it ran longer than its time limit of 50 s.");
    WriteTextFile(directory / L"work\\killprocess", "kept");
    EXPECT_FALSE(job.OnCheckUpdate());
    EXPECT_EQ(StopRequest(), "kept");
}

TEST_F(HostJobEntryTest, OutputAndProgressEndTheSilence) {
    Scheduling limited;
    limited.silenceLimit = 50;
    auto job = Job(limited);
    EXPECT_FALSE(job.OnCheckUpdate()); // the log has appeared
    EXPECT_EQ(StopRequest(), "none");
}

TEST_F(HostJobEntryTest, AJobWithinItsLimitsGoesOn) {
    Scheduling limited;
    limited.timeLimit = 500;
    auto job = Job(limited);
    EXPECT_FALSE(job.OnCheckUpdate());
    EXPECT_EQ(StopRequest(), "none");
}

} // namespace

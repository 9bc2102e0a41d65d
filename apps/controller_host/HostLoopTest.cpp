#include "kit/controller_host/HostFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobListJournal.h"
#include "formats/RunProtocol.h"
#include "kit/Deadline.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"
#include "text/Text.h"

namespace {

/// A host whose loop does not run yet, so that several requests can be queued.
class HostLoopTest_Requests : public HostFixture {
protected:
    std::vector<JobListInfo> SavedList() const {
        std::vector<JobListInfo> jobs;
        EXPECT_TRUE(ControllerCSWrapper::ParseJobList(directory / L"job_list.json", jobs));
        return jobs;
    }
};

class HostLoopTest : public HostLoopTest_Requests {
protected:
    HostLoopTest() { StartLoop(); }

    /// After this the host's next snapshot fails: another program has written the list, and it cannot be kept aside.
    void BlockList() const {
        WriteTextFile(directory / L"job_list.json", R"({"JobList":[]})");
        for (const wchar_t* kept : {L"job_list.json.bak\\held", L"job_list.json.replaced\\held"}) {
            WriteTextFile(directory / kept, "");
        }
    }
    void FreeList() const {
        EXPECT_TRUE(platform::RemoveTree(directory / L"job_list.json.bak"));
        EXPECT_TRUE(platform::RemoveTree(directory / L"job_list.json.replaced"));
    }

    void ExpectNoLossAfterRemoval(const std::wstring& file) {
        Enqueue(1);
        WaitForStatus(JobStatus::Running);
        EXPECT_TRUE(platform::RemoveFile(directory / file));
        Enqueue(1);
        EXPECT_EQ(SavedList().size(), 2U);
    }

    std::string Journal() const { return ReadTextFile(job_list_journal::PathOf(directory / L"job_list.json")); }

    template <typename Condition>
    void Await(const char* what, const Condition& isTrue) const {
        const test_support::Deadline deadline(what);
        platform::DirectoryWatch watch(directory.Path());
        while (!isTrue()) {
            platform::WaitForAny({watch.Handle()}, std::nullopt);
            watch.Rearm();
        }
    }
};

TEST_F(HostLoopTest, AnEnqueuedJobIsStartedWithoutAnyMoreRequests) {
    const JobEnqueueResult result = Enqueue(1);
    EXPECT_EQ(result.requestId, L"request");
    EXPECT_EQ(WaitForStatus(JobStatus::Queued).id, result.jobIds.front().id);
    EXPECT_EQ(WaitForStatus(JobStatus::Running).id, result.jobIds.front().id);
}

TEST_F(HostLoopTest, TheEndOfAProcessEndsItsJobAndStartsTheNext) {
    const JobEnqueueResult result = Enqueue(2);
    const JobStatusInfo first = WaitForStatus(JobStatus::Running);
    WriteTextFile(first.workDir + L"\\run_scenario_result.json", R"({"version":1,"jobId":"x","succeeded":true})");
    processes.front().Finish();
    EXPECT_EQ(WaitForStatus(JobStatus::Success).id, first.id);
    EXPECT_EQ(WaitForStatus(JobStatus::Running).id, result.jobIds.back().id);
}

TEST_F(HostLoopTest, AProcessThatLeavesNoResultHasFailed) {
    Enqueue(1);
    WaitForStatus(JobStatus::Running);
    processes.front().Finish();
    WaitForStatus(JobStatus::Failed);
}

TEST_F(HostLoopTest, ProgressIsToldToEverybody) {
    Enqueue(1);
    const JobStatusInfo job = WaitForStatus(JobStatus::Running);
    WriteTextFile(job.workDir + L"\\progress_info_list.json",
                  R"({"version":1,"jobId":"x","progressInfoList":[{"progress":40,"message":"reading"}]})");
    EXPECT_EQ(WaitForStatus(JobStatus::Running).progress, 40);
}

TEST_F(HostLoopTest, ACancelledJobIsAskedToStopAndIsCanceledOnceItsProcessHasGone) {
    const JobEnqueueResult result = Enqueue(1);
    WaitForStatus(JobStatus::Running);
    EXPECT_TRUE(line.Deliver(2, L"CancelJobs", Ids(L"CancelJobs", {L"1"})));
    EXPECT_EQ(line.WaitFor(L"CancelJobsFinish").peer, 2U);
    EXPECT_EQ(WaitForStatus(JobStatus::Canceling).id, result.jobIds.front().id);
    processes.front().Finish();
    WaitForStatus(JobStatus::Canceled);
}

TEST_F(HostLoopTest, TheWishToStopCancelsWhatIsLeftAndWritesTheList) {
    Enqueue(2);
    WaitForStatus(JobStatus::Running);
    Stop();
    const std::vector<JobListInfo> jobs = SavedList();
    ASSERT_EQ(jobs.size(), 2U);
    EXPECT_EQ(jobs[0].status, JobStatus::Canceling);
    EXPECT_EQ(jobs[1].status, JobStatus::Dequeued);
    EXPECT_EQ(script.calls.back().function, "Terminate");
}

TEST_F(HostLoopTest, AListThatCouldNotBeWrittenIsWrittenOnceItCanBe) {
    BlockList();
    Enqueue(1);
    WaitForStatus(JobStatus::Running);
    EXPECT_EQ(SavedList().size(), 0U);
    FreeList();
    Await("the saved list", [&] { return SavedList().size() == 1; });
}

TEST_F(HostLoopTest, AListThatSomebodyRemovesIsWrittenWholeWithTheNextChange) {
    ExpectNoLossAfterRemoval(L"job_list.json");
}

TEST_F(HostLoopTest, AJournalThatSomebodyRemovesCostsNoJob) {
    ExpectNoLossAfterRemoval(L"job_list.json.journal");
}

TEST_F(HostLoopTest, AnAnsweredRequestIsInTheJournal) {
    const std::wstring first = Enqueue(1).jobIds.front().id;
    const std::wstring second = Enqueue(1).jobIds.front().id;
    const std::string snapshot = ReadTextFile(directory / L"job_list.json");
    EXPECT_NE(snapshot.find(text::ToUtf8(first)), std::string::npos);
    EXPECT_EQ(snapshot.find(text::ToUtf8(second)), std::string::npos);
    EXPECT_NE(Journal().find(text::ToUtf8(second)), std::string::npos);
}

TEST_F(HostLoopTest, TheJournalIsFoldedIntoTheListWhenNothingHappens) {
    Enqueue(1);
    WaitForStatus(JobStatus::Running);
    processes.front().Finish();
    WaitForStatus(JobStatus::Failed);
    Await("the empty journal", [&] { return Journal().find("changed") == std::string::npos; });
    EXPECT_EQ(SavedList().at(0).status, JobStatus::Failed);
}

TEST_F(HostLoopTest, AHostThatEndsLeavesAListThatNeedsNoJournal) {
    Enqueue(2);
    Stop();
    EXPECT_FALSE(platform::Exists(job_list_journal::PathOf(directory / L"job_list.json")));
    EXPECT_EQ(ReadTextFile(directory / L"job_list.json").rfind(R"({"JobList":[{)", 0), 0U);
}

TEST_F(HostLoopTest, ATerminateRequestIsAnsweredAndEndsTheLoop) {
    EXPECT_TRUE(line.Deliver(3, L"TerminateRequest", ControllerCSWrapper::Serialize(L"TerminateRequest")));
    EXPECT_EQ(line.WaitFor(L"TerminateResponse").peer, 3U);
    WaitForTheEnd();
}

/// Several jobs at a time, as set by `parallelJobs`.
class HostLoopTest_Parallel : public HostLoopTest_Requests {
protected:
    void Allow(const std::string& jobs) const {
        WriteTextFile(directory / L"settings.json",
                      R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json",)"
                      R"("logFile":"","parallelJobs":)" +
                          jobs + "}");
    }

    std::vector<JobStatus> SavedStatuses() const {
        std::vector<JobStatus> statuses;
        for (const JobListInfo& job : SavedList()) {
            statuses.push_back(job.status);
        }
        return statuses;
    }

    /// The ids of the jobs started since the last call.
    std::vector<std::wstring> Started(std::size_t count) {
        std::vector<std::wstring> ids;
        while (ids.size() < count) {
            ids.push_back(WaitForStatus(JobStatus::Running).id);
        }
        return ids;
    }
};

TEST_F(HostLoopTest_Parallel, SoManyJobsRunAtATimeInTheOrderOfTheList) {
    Allow("2");
    StartLoop();
    const JobEnqueueResult result = Enqueue(3);
    EXPECT_EQ(Started(2), (std::vector{result.jobIds[0].id, result.jobIds[1].id}));
    EXPECT_EQ(SavedStatuses(), (std::vector{JobStatus::Running, JobStatus::Running, JobStatus::Queued}));
    processes.back().Finish();
    EXPECT_EQ(Started(1), (std::vector{result.jobIds[2].id}));
    EXPECT_EQ(SavedStatuses(), (std::vector{JobStatus::Running, JobStatus::Failed, JobStatus::Running}));
}

TEST_F(HostLoopTest_Parallel, AJobThatComesWhileOthersRunIsStartedAtOnce) {
    Allow("60");
    StartLoop();
    const JobEnqueueResult first = Enqueue(1);
    EXPECT_EQ(Started(1), (std::vector{first.jobIds[0].id}));
    const JobEnqueueResult second = Enqueue(1);
    EXPECT_EQ(Started(1), (std::vector{second.jobIds[0].id}));
    processes.front().Finish();
    EXPECT_EQ(WaitForStatus(JobStatus::Failed).id, first.jobIds[0].id);
    const JobEnqueueResult third = Enqueue(1);
    EXPECT_EQ(Started(1), (std::vector{third.jobIds[0].id}));
}

TEST_F(HostLoopTest_Parallel, EachOfThemIsCancelledByItself) {
    Allow("3");
    StartLoop();
    const JobEnqueueResult result = Enqueue(3);
    Started(3);
    EXPECT_TRUE(line.Deliver(2, L"CancelJobs", Ids(L"CancelJobs", {L"2"})));
    EXPECT_EQ(WaitForStatus(JobStatus::Canceling).id, result.jobIds[1].id);
    std::next(processes.begin())->Finish();
    EXPECT_EQ(WaitForStatus(JobStatus::Canceled).id, result.jobIds[1].id);
    EXPECT_EQ(SavedStatuses(), (std::vector{JobStatus::Running, JobStatus::Canceled, JobStatus::Running}));
}

TEST_F(HostLoopTest_Parallel, ASmallerNumberLaterEndsNoneAndHoldsTheNextBack) {
    Allow("2");
    StartLoop();
    const JobEnqueueResult result = Enqueue(4);
    Started(2);
    Allow("1");
    processes.front().Finish();
    WaitForStatus(JobStatus::Failed);
    EXPECT_EQ(Enqueue(0).jobIds.size(), 0U); // a turn of the loop
    EXPECT_EQ(SavedStatuses(),
              (std::vector{JobStatus::Failed, JobStatus::Running, JobStatus::Queued, JobStatus::Queued}));
    processes.back().Finish();
    EXPECT_EQ(Started(1), (std::vector{result.jobIds[2].id}));
}

TEST_F(HostLoopTest_Requests, AfterATerminateRequestNoQueuedJobIsStarted) {
    ASSERT_TRUE(line.Deliver(1, L"EnqueueJobs", EnqueueRequest(2)));
    ASSERT_TRUE(line.Deliver(1, L"TerminateRequest", ControllerCSWrapper::Serialize(L"TerminateRequest")));
    StartLoop();
    WaitForTheEnd();
    EXPECT_TRUE(processes.empty());
    const std::vector<JobListInfo> jobs = SavedList();
    ASSERT_EQ(jobs.size(), 2U);
    EXPECT_EQ(jobs[0].status, JobStatus::Dequeued);
    EXPECT_EQ(jobs[1].status, JobStatus::Dequeued);
    EXPECT_EQ(jobs[0].startTime, L"");
}

} // namespace

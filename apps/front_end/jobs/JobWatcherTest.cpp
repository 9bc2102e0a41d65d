#include "front_end/jobs/JobWatcher.h"

#include "formats/JobStates.h"
#include "front_end/commands/CommandFailure.h"
#include "kit/front_end/CommandContextFixture.h"

#include <algorithm>

namespace {

using front_end::HostSession;
using front_end::JobWatcher;

using Ids = std::vector<std::wstring>;

/// A host with two jobs; the second is running.
class JobWatcherTest : public CommandContextFixture {
protected:
    JobWatcherTest() { host.jobs = {Job(1, L"a.stl", JobStatus::Queued), Job(2, L"b.stl", JobStatus::Running)}; }

    /// The changes received so far.
    static Ids Changes(JobWatcher& watcher) { return watcher.WaitForChanges(std::chrono::milliseconds(0)); }

    static JobStatus StatusIn(const JobWatcher& watcher, const std::wstring& id) {
        return watcher.Board().Find(id)->job.status;
    }

    std::ptrdiff_t ListRequests() const {
        const auto requests = host.Requests();
        return std::count_if(requests.begin(), requests.end(),
                             [](const auto& request) { return request.name == L"InitJobsRequest"; });
    }

    HostSession session{context, front_end::Start::Never};
};

TEST_F(JobWatcherTest, ChangesAreTakenOverInTheirOrder) {
    JobWatcher watcher(session);
    host.Report(Status(2, JobStatus::Failed));
    host.Report(Status(1, JobStatus::Running, 40));
    EXPECT_EQ(Changes(watcher), (Ids{L"id2", L"id1"}));
    EXPECT_EQ(StatusIn(watcher, L"id2"), JobStatus::Failed);
    EXPECT_EQ(watcher.Board().Find(L"id1")->progress, 40);
    EXPECT_EQ(Changes(watcher), Ids{});
}

TEST_F(JobWatcherTest, WhoFollowsAllTakesNewJobsFromTheList) {
    JobWatcher watcher(session);
    host.jobs.push_back(Job(3, L"c.stl", JobStatus::Queued));
    host.jobs.push_back(Job(4, L"d.stl", JobStatus::Queued));
    host.Report(Status(3, JobStatus::Queued));
    host.Report(Status(4, JobStatus::Queued));
    EXPECT_EQ(Changes(watcher), (Ids{L"id3", L"id4"}));
    EXPECT_EQ(watcher.Board().Find(L"id3")->job.inputFiles, Ids{L"/in/c.stl"});
    EXPECT_EQ(ListRequests(), 2);
}

TEST_F(JobWatcherTest, AnUnknownJobThatIsDeletedIsNoReasonToAsk) {
    JobWatcher watcher(session);
    host.Report(Status(3, unlistedStatus));
    EXPECT_EQ(Changes(watcher), Ids{});
    EXPECT_EQ(ListRequests(), 1);
}

TEST_F(JobWatcherTest, WhoFollowsSomeHearsOfNoOthers) {
    JobWatcher watcher(session, {host.jobs[0]});
    host.Report(Status(2, JobStatus::Success));
    host.Report(Status(3, JobStatus::Queued));
    EXPECT_EQ(Changes(watcher), Ids{});
    EXPECT_EQ(ListRequests(), 0);
}

TEST_F(JobWatcherTest, AnEditedJobIsTakenFromTheList) {
    for (const bool followsAll : {true, false}) {
        host.jobs[0].hold = false;
        JobWatcher watcher = followsAll ? JobWatcher(session) : JobWatcher(session, {host.jobs[0]});
        host.jobs[0].hold = true;
        host.Report(Status(1, JobStatus::Queued));
        EXPECT_EQ(Changes(watcher), Ids{L"id1"});
        EXPECT_TRUE(watcher.Board().Find(L"id1")->job.hold);
        EXPECT_EQ(watcher.Board().Views().size(), followsAll ? 2U : 1U);
    }
}

TEST_F(JobWatcherTest, AJobThatIsQueuedAgainShowsItsAttempt) {
    JobWatcher watcher(session, {host.jobs[1]});
    host.jobs[1].attempt = 1;
    host.jobs[1].lastEnding = L"It crashed.";
    host.Report(Status(2, JobStatus::Queued));
    EXPECT_EQ(Changes(watcher), Ids{L"id2"});
    EXPECT_EQ(watcher.Board().Find(L"id2")->job.lastEnding, L"It crashed.");
}

TEST_F(JobWatcherTest, WhatWasToldSinceTheListIsNotMissed) {
    const std::vector<ListedJob> jobs = session.FetchJobs();
    host.Report(Status(1, JobStatus::Running));
    JobWatcher watcher(session, jobs);
    EXPECT_EQ(Changes(watcher), Ids{L"id1"});
    EXPECT_EQ(StatusIn(watcher, L"id1"), JobStatus::Running);
}

TEST_F(JobWatcherTest, AFollowedJobStaysAsItEndedWhenItIsDeleted) {
    JobWatcher watcher(session, host.jobs);
    host.Report(Status(1, unlistedStatus));
    host.Report(Status(2, JobStatus::Success));
    host.Report(Status(2, unlistedStatus));
    EXPECT_EQ(Changes(watcher), (Ids{L"id1", L"id2"}));
    EXPECT_EQ(StatusIn(watcher, L"id1"), unlistedStatus);
    EXPECT_EQ(StatusIn(watcher, L"id2"), JobStatus::Success);
}

TEST_F(JobWatcherTest, AllHaveEndedWhenNoneWaitsOrRuns) {
    JobWatcher watcher(session, host.jobs);
    EXPECT_FALSE(watcher.HaveAllEnded());
    host.Report(Status(2, JobStatus::Failed));
    Changes(watcher);
    EXPECT_FALSE(watcher.HaveAllEnded());
    host.Report(Status(1, unlistedStatus));
    Changes(watcher);
    EXPECT_TRUE(watcher.HaveAllEnded());
    EXPECT_TRUE(JobWatcher(session, {}).HaveAllEnded());
}

TEST_F(JobWatcherTest, AHostThatHasGoneEndsTheWait) {
    JobWatcher watcher(session);
    host.transmitter.isEngineThere = false;
    EXPECT_THROW(watcher.WaitForChanges(), front_end::CommandFailure);
}

} // namespace

#include "controller_host/HostJobEntry.h"
#include "formats/QueueStateFile.h"
#include "formats/RunProtocol.h"
#include "kit/LogCapture.h"
#include "kit/controller_host/AnswersFixture.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Clock.h"
#include "text/Text.h"

#include <limits>

namespace {

/// A host without its loop: the test starts the jobs, one call after another, and ends their processes.
class HostSchedulingTest : public AnswersFixture {
protected:
    HostSchedulingTest() { UseSettings(R"("parallelJobs":2)"); }

    void UseSettings(const std::string& more) const {
        WriteTextFile(directory / L"settings.json",
                      R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json","logFile":"",)"
                      R"("scenarioDirectories":[{"path":"scenarios"}],)" +
                          more + "}");
        settings::UseFile(directory / L"settings.json");
    }

    /// Enqueues one job; returns its answer.
    JobEnqueueResult Ask1(const Scheduling& scheduling) {
        const ScheduledRequest request(RequestFor(directory / L"scenarios\\mesh.rb", {directory / L"part.stl"}),
                                       scheduling);
        Ask(L"EnqueueJobs", messages::Serialize(events::enqueueJobs, request));
        return Answered<JobEnqueueResult>(L"EnqueueJobsFinish");
    }
    std::wstring Enqueue1(const Scheduling& scheduling) { return Ask1(scheduling).jobIds.at(0).id; }

    /// Starts the next job; returns its id, or an empty text.
    std::wstring Start() {
        std::vector<JobStatusInfo> updated;
        return engine->ExecuteJob(nullptr, updated) && !updated.empty() ? updated.back().id : std::wstring();
    }

    /// Ends the process of the job started last.
    void End(bool succeeds) {
        for (const JobListInfo& job : Jobs()) {
            if (job.status == JobStatus::Running && succeeds) {
                WriteTextFile(job.workDir + L"\\run_scenario_result.json",
                              R"({"version":1,"jobId":"x","succeeded":true})");
            }
        }
        processes.back().Finish();
        std::vector<JobStatusInfo> changed;
        EXPECT_TRUE(engine->CheckUpdate(changed));
    }

    JobStatus StatusOf(const std::wstring& id) { return Row(id).status; }

    ListedJob Row(const std::wstring& id) {
        for (const ListedJob& row : engine->Rows()) {
            if (row.id == id) {
                return row;
            }
        }
        ADD_FAILURE() << "not listed";
        return {};
    }

    void Restart() {
        engine->FlushJobList();
        engine.reset();
        engine = std::make_unique<HostEngine>(functions.get());
        answers = std::make_unique<RequestHandler>(*engine, transmitter);
    }

    static Scheduling After(const std::wstring& id) {
        Scheduling scheduling;
        scheduling.after = {id};
        return scheduling;
    }
    static Scheduling Priority(std::int32_t priority) {
        Scheduling scheduling;
        scheduling.priority = priority;
        return scheduling;
    }
    static Scheduling OnHold() {
        Scheduling scheduling;
        scheduling.hold = true;
        return scheduling;
    }
    static Scheduling Needs(std::int64_t licences) {
        Scheduling scheduling;
        scheduling.needs = {{L"cadLicence", licences}};
        return scheduling;
    }
};

TEST_F(HostSchedulingTest, AHigherPriorityStartsFirstAndThenTheOlderJob) {
    const std::wstring first = Enqueue1({});
    const std::wstring second = Enqueue1({});
    const std::wstring urgent = Enqueue1(Priority(5));
    EXPECT_EQ(Start(), urgent);
    EXPECT_EQ(Start(), first);
    EXPECT_EQ(Start(), L"");
    End(true);
    EXPECT_EQ(Start(), second);
}

TEST_F(HostSchedulingTest, AJobOnHoldWaitsUntilItIsReleasedAndBlocksNobody) {
    const std::wstring held = Enqueue1(OnHold());
    const std::wstring other = Enqueue1({});
    EXPECT_EQ(Row(held).waitReason, L"hold");
    EXPECT_EQ(Start(), other);
    EXPECT_EQ(Start(), L"");
    EXPECT_FALSE(engine->IsCompleted());
    End(true);
    EXPECT_EQ(Start(), L"");
    EXPECT_FALSE(engine->IsCompleted());
    JobsEdit release;
    release.jobs = {L"1"};
    release.hold = false;
    Ask(L"EditJobsRequest", messages::Serialize(events::editJobsRequest, release));
    EXPECT_EQ(Answered<std::vector<JobStatusInfo>>(L"EditJobsFinish").at(0).id, held);
    EXPECT_EQ(Start(), held);
}

TEST_F(HostSchedulingTest, TheQueueIsCompletedWhenNothingWaitsOrRuns) {
    EXPECT_TRUE(engine->IsCompleted());
    Enqueue1({});
    EXPECT_FALSE(engine->IsCompleted());
    Start();
    EXPECT_FALSE(engine->IsCompleted());
    End(true);
    EXPECT_TRUE(engine->IsCompleted());
}

TEST_F(HostSchedulingTest, OnlyWaitingJobsAreEdited) {
    const std::wstring running = Enqueue1({});
    const std::wstring waiting = Enqueue1({});
    EXPECT_EQ(Start(), running);
    JobsEdit edit;
    edit.jobs = {L"1", waiting, L"77"};
    edit.priority = 9;
    Ask(L"EditJobsRequest", messages::Serialize(events::editJobsRequest, edit));
    const auto edited = Answered<std::vector<JobStatusInfo>>(L"EditJobsFinish");
    ASSERT_EQ(edited.size(), 1U);
    EXPECT_EQ(edited[0].id, waiting);
    EXPECT_EQ(Row(waiting).priority, 9);
    EXPECT_EQ(Row(running).priority, 0);
}

TEST_F(HostSchedulingTest, AFollowerStartsWhenItsPredecessorHasSucceeded) {
    const std::wstring first = Enqueue1({});
    const std::wstring follower = Enqueue1(After(L"1"));
    EXPECT_EQ(Start(), first);
    EXPECT_EQ(Start(), L"");
    EXPECT_EQ(Row(follower).waitReason, L"job");
    EXPECT_EQ(Row(follower).waitName, L"1");
    End(true);
    EXPECT_EQ(Start(), follower);
}

TEST_F(HostSchedulingTest, TheFollowersOfAFailedJobFailWithItsNumber) {
    const std::wstring first = Enqueue1({});
    const std::wstring second = Enqueue1(After(first));
    const std::wstring third = Enqueue1(After(second));
    EXPECT_EQ(Start(), first);
    End(false);
    EXPECT_EQ(StatusOf(second), JobStatus::Failed);
    EXPECT_EQ(StatusOf(third), JobStatus::Failed);
    const std::vector<JobStatusInfo> stranded = engine->TakeStranded();
    ASSERT_EQ(stranded.size(), 2U);
    EXPECT_TRUE(engine->TakeStranded().empty());
    engine->ExplainFailures(stranded);
    EXPECT_NE(ReadTextFile(Row(second).workDir + L"\\run_scenario_result.json")
                  .find("Job 1, which had to succeed before, has not."),
              std::string::npos);
}

TEST_F(HostSchedulingTest, TheFollowersOfAJobThatCannotBeStartedFailAndTheNextOneStarts) {
    script.answer = [this](const test_modules::Call& call, std::wstring& output) {
        if (call.function != "RunScenario") {
            return 0L;
        }
        output = script.calls.size() == 1 ? L"no licence" : processes.emplace_back().Answer();
        return script.calls.size() == 1 ? 1L : 0L;
    };
    const std::wstring first = Enqueue1(Priority(1));
    const std::wstring follower = Enqueue1(After(first));
    const std::wstring other = Enqueue1({});
    EXPECT_EQ(Start(), other);
    EXPECT_EQ(StatusOf(first), JobStatus::Failed);
    EXPECT_EQ(StatusOf(follower), JobStatus::Failed);
}

TEST_F(HostSchedulingTest, AFollowerMaySkipOrRunInAnyCase) {
    const std::wstring first = Enqueue1({});
    Scheduling skipping = After(first);
    skipping.skipIfAfterFails = true;
    const std::wstring skipped = Enqueue1(skipping);
    Scheduling anyResult;
    anyResult.afterEnd = {first};
    const std::wstring cleaning = Enqueue1(anyResult);
    EXPECT_EQ(Start(), first);
    End(false);
    EXPECT_EQ(StatusOf(skipped), JobStatus::Dequeued);
    EXPECT_EQ(Start(), cleaning);
}

TEST_F(HostSchedulingTest, AFollowerOfAJobThatHasEndedKnowsItsResultAtOnce) {
    const std::wstring good = Enqueue1({});
    EXPECT_EQ(Start(), good);
    End(true);
    const std::wstring bad = Enqueue1({});
    EXPECT_EQ(Start(), bad);
    End(false);
    const std::wstring afterGood = Enqueue1(After(good));
    EXPECT_EQ(StatusOf(Enqueue1(After(bad))), JobStatus::Failed);
    EXPECT_EQ(Start(), afterGood);
}

TEST_F(HostSchedulingTest, TheFollowersOfADeletedOrCancelledJobFail) {
    const std::wstring deleted = Enqueue1({});
    const std::wstring cancelled = Enqueue1({});
    const std::wstring afterDeleted = Enqueue1(After(deleted));
    const std::wstring afterCancelled = Enqueue1(After(cancelled));
    std::vector<std::wstring> ids = {deleted};
    std::vector<std::wstring> gone;
    engine->DeleteJobs(ids, gone);
    ids = {cancelled};
    std::vector<JobStatusInfo> reports;
    engine->CancelJobs(ids, reports, false);
    EXPECT_EQ(StatusOf(afterDeleted), JobStatus::Failed);
    EXPECT_EQ(StatusOf(afterCancelled), JobStatus::Failed);
}

TEST_F(HostSchedulingTest, AnUnknownPredecessorIsRefused) {
    const JobEnqueueResult result = Ask1(After(L"7"));
    EXPECT_EQ(result.jobIds.at(0), JobIdInfo());
    EXPECT_EQ(result.inputSetResults.at(0).at(0), L"The job 7, which has to end before, is not listed.");
}

TEST_F(HostSchedulingTest, AJobWaitsForItsTimeAndBlocksNobody) {
    Scheduling later;
    later.notBefore = platform::Now() + 1000000;
    const std::wstring timed = Enqueue1(later);
    const std::wstring other = Enqueue1({});
    EXPECT_EQ(Start(), other);
    EXPECT_EQ(Start(), L"");
    EXPECT_EQ(Row(timed).waitReason, L"time");
    EXPECT_EQ(engine->NextStartTime(), later.notBefore);
    Scheduling past;
    past.notBefore = 1;
    const std::wstring due = Enqueue1(past);
    EXPECT_EQ(Start(), due);
    // With all slots taken, there is nothing to wait for but the end of a job.
    EXPECT_EQ(engine->NextStartTime(), std::nullopt);
}

TEST_F(HostSchedulingTest, RunningJobsNeverTakeMoreOfAResourceThanThereIs) {
    UseSettings(R"("parallelJobs":10,"resources":{"cadLicence":2})");
    const std::wstring first = Enqueue1(Needs(1));
    const std::wstring both = Enqueue1(Needs(2));
    const std::wstring second = Enqueue1(Needs(1));
    const std::wstring without = Enqueue1({});
    EXPECT_EQ(Start(), first);
    EXPECT_EQ(Start(), second);
    EXPECT_EQ(Start(), without);
    EXPECT_EQ(Start(), L"");
    EXPECT_EQ(Row(both).waitReason, L"resource");
    EXPECT_EQ(Row(both).waitName, L"cadLicence");
    for (ScriptedProcess& process : processes) {
        process.Finish();
    }
    std::vector<JobStatusInfo> changed;
    engine->CheckUpdate(changed);
    EXPECT_EQ(Start(), both);
}

TEST_F(HostSchedulingTest, WhatCanNeverBeHadIsRefused) {
    UseSettings(R"("resources":{"cadLicence":2})");
    EXPECT_EQ(Ask1(Needs(3)).inputSetResults.at(0).at(0),
              L"More is needed of the resource cadLicence than there is: 3 of 2. Need less, or change the setting "
              L"\"resources\".");
    Scheduling unknown;
    unknown.needs = {{L"colour", 1}};
    EXPECT_EQ(Ask1(unknown).inputSetResults.at(0).at(0),
              L"The resource colour is needed, which the setting \"resources\" does not name.");
    const std::wstring job = Enqueue1(Needs(2));
    JobsEdit edit;
    edit.jobs = {job};
    edit.needs = Needs(3).needs;
    Ask(L"EditJobsRequest", messages::Serialize(events::editJobsRequest, edit));
    EXPECT_NE(Refusal().find(L"cadLicence"), std::wstring::npos);
    EXPECT_EQ(Row(job).needs.at(L"cadLicence"), 2);
}

TEST_F(HostSchedulingTest, TheDescriptionOfAScenarioSaysWhatEachOfItsJobsNeeds) {
    UseSettings(R"("resources":{"cadLicence":2,"memoryMiB":100})");
    WriteTextFile(directory / L"scenarios\\mesh.scenario.json",
                  R"({"version":1,"needs":{"cadLicence":1,"memoryMiB":50}})");
    EXPECT_EQ(Row(Enqueue1({})).needs, (std::map<std::wstring, std::int64_t>{{L"cadLicence", 1}, {L"memoryMiB", 50}}));
    EXPECT_EQ(Row(Enqueue1(Needs(2))).needs,
              (std::map<std::wstring, std::int64_t>{{L"cadLicence", 2}, {L"memoryMiB", 50}}));
}

TEST_F(HostSchedulingTest, AScenarioThatNeedsMoreThanThereIsIsRefused) {
    WriteTextFile(directory / L"scenarios\\mesh.scenario.json", R"({"version":1,"needs":{"cadLicence":1}})");
    EXPECT_EQ(Ask1({}).inputSetResults.at(0).at(0),
              L"The resource cadLicence is needed, which the setting \"resources\" does not name.");
}

TEST_F(HostSchedulingTest, APausedQueueStartsNothingUntilItIsResumedByWhateverHost) {
    Ask(L"SetQueueStateRequest", messages::Serialize(events::setQueueStateRequest, {true}));
    line.WaitFor(L"QueueStateResponse");
    Enqueue1({});
    EXPECT_EQ(Start(), L"");
    UseSettings(R"("afterRestart":"queued")");
    Restart();
    EXPECT_TRUE(engine->State().isPaused);
    EXPECT_EQ(Start(), L"");
    std::wstring problem;
    EXPECT_TRUE(engine->SetState({false}, problem));
    EXPECT_EQ(Start(), Jobs().at(0).id);
}

TEST_F(HostSchedulingTest, AStateThatCannotBeReadPausesTheQueue) {
    const LogCapture log;
    WriteTextFile(queue_state_file::PathOf(directory / L"job_list.json"), "{");
    Restart();
    EXPECT_TRUE(engine->State().isPaused);
    EXPECT_NE(log.Text().find("The queue is paused, because its state cannot be read"), std::string::npos)
        << log.Text();
}

TEST_F(HostSchedulingTest, WaitingJobsOutliveTheHostIfTheSettingsSaySo) {
    UseSettings(R"("afterRestart":"queued")");
    const std::wstring running = Enqueue1({});
    const std::wstring low = Enqueue1(Priority(-1));
    const std::wstring follower = Enqueue1(After(low));
    const std::wstring high = Enqueue1(Priority(7));
    EXPECT_EQ(Start(), high);
    Restart();
    EXPECT_EQ(StatusOf(high), JobStatus::Canceled);
    EXPECT_EQ(Row(low).priority, -1);
    EXPECT_EQ(Row(follower).waitName, L"2");
    EXPECT_GT(Row(low).queuedTime, 0);
    EXPECT_EQ(StatusOf(running), JobStatus::Queued);
    EXPECT_TRUE(engine->HasChanges());
}

TEST_F(HostSchedulingTest, InterruptedJobsRunAgainIfTheSettingsSaySo) {
    UseSettings(R"("afterRestart":"all","parallelJobs":2)");
    const std::wstring running = Enqueue1({});
    const std::wstring cancelled = Enqueue1({});
    EXPECT_EQ(Start(), running);
    EXPECT_EQ(Start(), cancelled);
    std::vector<std::wstring> ids = {cancelled};
    std::vector<JobStatusInfo> reports;
    engine->CancelJobs(ids, reports, false);
    Restart();
    EXPECT_EQ(StatusOf(cancelled), JobStatus::Canceled);
    EXPECT_EQ(StatusOf(running), JobStatus::Queued);
    EXPECT_EQ(Row(running).startTime, L"");
    EXPECT_EQ(Row(running).outputDir, directory / L"output");
}

TEST_F(HostSchedulingTest, AHostThatEndsLeavesWaitingJobsToTheNextOne) {
    UseSettings(R"("afterRestart":"all")");
    const std::wstring running = Enqueue1({});
    const std::wstring waiting = Enqueue1({});
    EXPECT_EQ(Start(), running);
    WriteTextFile(Row(running).workDir + L"\\scenario.log", "interrupted");
    std::vector<JobStatusInfo> cancelled;
    engine->StopAtEnd(cancelled);
    EXPECT_TRUE(cancelled.empty());
    // A host that is killed now leaves a list of which the next one runs the job again.
    EXPECT_EQ(StatusOf(running), JobStatus::Running);
    EXPECT_TRUE(platform::Exists(Row(running).workDir + L"\\killprocess"));
    processes.back().Finish();
    std::vector<JobStatusInfo> changed;
    engine->CheckUpdate(changed);
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed.front().status, JobStatus::Queued);
    EXPECT_EQ(StatusOf(running), JobStatus::Queued);
    EXPECT_EQ(StatusOf(waiting), JobStatus::Queued);
    EXPECT_EQ(Row(running).outputDir, directory / L"output");
}

TEST_F(HostSchedulingTest, AnEndedJobCanBeRepeatedWhereItsResultsWereAskedFor) {
    const std::wstring first = Enqueue1({});
    EXPECT_EQ(Start(), first);
    End(false);
    Restart();
    EXPECT_NE(Row(first).outputDir, directory / L"output");
    EXPECT_EQ(RequestToRepeat(Row(first)).outputDir, directory / L"output");
}

TEST_F(HostSchedulingTest, AJobThatSucceedsWhileTheHostEndsIsNotRunAgain) {
    UseSettings(R"("afterRestart":"all")");
    const std::wstring job = Enqueue1({});
    EXPECT_EQ(Start(), job);
    std::vector<JobStatusInfo> cancelled;
    engine->StopAtEnd(cancelled);
    End(true);
    EXPECT_EQ(StatusOf(job), JobStatus::Success);
}

TEST_F(HostSchedulingTest, AFailedJobRunsAgainAndKeepsTheLogOfEachAttempt) {
    Scheduling twice;
    twice.retries = 1;
    const std::wstring job = Enqueue1(twice);
    EXPECT_EQ(Start(), job);
    WriteTextFile(Row(job).workDir + L"\\scenario.log", "first");
    End(false);
    EXPECT_EQ(StatusOf(job), JobStatus::Queued);
    EXPECT_EQ(Row(job).attempt, 1);
    EXPECT_NE(Row(job).lastEnding.find(L"left no result"), std::wstring::npos);
    EXPECT_EQ(ReadTextFile(Row(job).workDir + L"\\scenario.1.log"), "first");
    EXPECT_EQ(Row(job).outputDir, directory / L"output");
    EXPECT_EQ(Start(), job);
    End(true);
    EXPECT_EQ(StatusOf(job), JobStatus::Success);
    EXPECT_EQ(Row(job).attempt, 2);
}

TEST_F(HostSchedulingTest, WithoutRetriesLeftTheFollowersFailToo) {
    Scheduling twice;
    twice.retries = 1;
    const std::wstring job = Enqueue1(twice);
    const std::wstring follower = Enqueue1(After(job));
    EXPECT_EQ(Start(), job);
    End(false);
    EXPECT_EQ(StatusOf(follower), JobStatus::Queued);
    EXPECT_EQ(Start(), job);
    End(false);
    EXPECT_EQ(StatusOf(job), JobStatus::Failed);
    EXPECT_EQ(StatusOf(follower), JobStatus::Failed);
}

TEST_F(HostSchedulingTest, ADelayedRetryWaitsForItsTime) {
    Scheduling later;
    later.retries = 1;
    later.retryDelay = 1000000;
    const std::wstring job = Enqueue1(later);
    EXPECT_EQ(Start(), job);
    End(false);
    EXPECT_EQ(Start(), L"");
    EXPECT_EQ(Row(job).waitReason, L"time");
}

TEST_F(HostSchedulingTest, ACancelledJobIsNotRunAgain) {
    Scheduling twice;
    twice.retries = 1;
    const std::wstring job = Enqueue1(twice);
    EXPECT_EQ(Start(), job);
    std::vector<std::wstring> ids = {job};
    std::vector<JobStatusInfo> reports;
    engine->CancelJobs(ids, reports, false);
    End(false);
    EXPECT_EQ(StatusOf(job), JobStatus::Canceled);
}

TEST_F(HostSchedulingTest, AProgramThatKnowsNoSchedulingReadsTheListOfAHost) {
    Enqueue1(Priority(3));
    engine->EndJournal();
    std::vector<JobListInfo> jobs;
    ASSERT_TRUE(ControllerCSWrapper::ParseJobList(directory / L"job_list.json", jobs));
    EXPECT_EQ(jobs, Jobs());
}

TEST_F(HostSchedulingTest, TenThousandJobsWithPrioritiesStartInTheirOrder) {
    ScheduledRequest request(RequestFor(directory / L"scenarios\\mesh.rb", {}), Priority(1));
    request.inputFileSets.assign(10000, {directory / L"part.stl"});
    Ask(L"EnqueueJobs", messages::Serialize(events::enqueueJobs, request));
    const auto result = Answered<JobEnqueueResult>(L"EnqueueJobsFinish");
    const std::wstring urgent = Enqueue1(Priority(2));
    EXPECT_EQ(Start(), urgent);
    EXPECT_EQ(Start(), result.jobIds.front().id);
}

} // namespace

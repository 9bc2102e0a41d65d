#include "controller_host/scheduling/Scheduler.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Kind = Scheduler::WaitReason::Kind;
using Stranded = std::vector<Scheduler::Stranded>;
using Ids = std::vector<std::wstring>;

constexpr std::int64_t ageing = 3600;
constexpr std::int64_t queued = 1'000'000;
/// No job that was queued at `queued` is overdue.
constexpr std::int64_t now = queued + 1;
constexpr std::int64_t overdue = queued + ageing;

class SchedulerTest : public testing::Test {
protected:
    void Name(const std::map<std::wstring, std::int64_t>& resources) { scheduler.SetRules({resources, ageing}); }
    void Wait(const std::wstring& id, const Scheduling& scheduling = {}, std::int64_t queuedTime = queued) {
        scheduler.Wait({id, ++order, queuedTime, scheduling});
    }
    void StartAll(std::int64_t time = now) {
        while (const auto next = scheduler.Next(time)) {
            scheduler.Start(*next);
            started.push_back(*next);
        }
    }
    Ids StartedAt(std::int64_t time = now) {
        started.clear();
        StartAll(time);
        return started;
    }
    void End(const std::wstring& id, bool hasSucceeded = true) {
        ASSERT_EQ(scheduler.End(id, hasSucceeded), Stranded());
    }
    Scheduler::WaitReason Why(const std::wstring& id, std::int64_t time = now) const {
        return scheduler.WhyWaiting(id, time).value();
    }

    Scheduler scheduler;
    std::uint64_t order = 0;
    Ids started;
};

Scheduling Needing(std::map<std::wstring, std::int64_t> needs) {
    Scheduling scheduling;
    scheduling.needs = std::move(needs);
    return scheduling;
}

Scheduling After(std::vector<std::wstring> ids) {
    Scheduling scheduling;
    scheduling.after = std::move(ids);
    return scheduling;
}

Scheduling AfterEnd(std::vector<std::wstring> ids) {
    Scheduling scheduling;
    scheduling.afterEnd = std::move(ids);
    return scheduling;
}

Scheduling WithPriority(std::int32_t priority) {
    Scheduling scheduling;
    scheduling.priority = priority;
    return scheduling;
}

Scheduling NotBefore(std::int64_t time) {
    Scheduling scheduling;
    scheduling.notBefore = time;
    return scheduling;
}

Scheduling OnHold() {
    Scheduling scheduling;
    scheduling.hold = true;
    return scheduling;
}

TEST_F(SchedulerTest, NothingStartsWhileNothingWaits) {
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
    EXPECT_EQ(scheduler.NextTime(), std::nullopt);
    EXPECT_EQ(scheduler.WhyWaiting(L"a", now), std::nullopt);
    EXPECT_EQ(scheduler.Predecessors(), Ids());
    EXPECT_EQ(scheduler.End(L"a", false), Stranded());
    scheduler.Start(L"a");
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
}

TEST_F(SchedulerTest, JobsOfOneTimeStartInListOrder) {
    scheduler.Wait({L"a", 2, queued, {}});
    scheduler.Wait({L"b", 1, queued, {}});
    EXPECT_EQ(StartedAt(), (Ids{L"b", L"a"}));
}

TEST_F(SchedulerTest, TheJobThatWasQueuedFirstStartsFirst) {
    Wait(L"late", {}, queued + 1);
    Wait(L"early", {}, queued);
    EXPECT_EQ(StartedAt(), (Ids{L"early", L"late"}));
}

TEST_F(SchedulerTest, AHigherPriorityStartsFirst) {
    Wait(L"normal");
    Wait(L"high", WithPriority(1));
    Wait(L"low", WithPriority(-1));
    EXPECT_EQ(StartedAt(), (Ids{L"high", L"normal", L"low"}));
}

TEST_F(SchedulerTest, WaitingForTheAgeingTimeOutweighsOneStepOfPriority) {
    Wait(L"high", WithPriority(1), queued + ageing);
    Wait(L"waited as long", {}, queued);
    Wait(L"waited longer", {}, queued - 1);
    EXPECT_EQ(StartedAt(), (Ids{L"waited longer", L"high", L"waited as long"}));
}

TEST_F(SchedulerTest, AnotherAgeingTimeAppliesToWaitingJobs) {
    Wait(L"high", WithPriority(1), queued + 100);
    Wait(L"early", {}, queued);
    EXPECT_EQ(scheduler.Next(now), L"high");
    scheduler.SetRules({{}, 99});
    EXPECT_EQ(scheduler.Next(now), L"early");
}

TEST_F(SchedulerTest, ExtremeNumbersDoNotOverflow) {
    using Priority = std::numeric_limits<std::int32_t>;
    using Time = std::numeric_limits<std::int64_t>;
    scheduler.SetRules({{}, Time::max()});
    Wait(L"last", WithPriority(Priority::min()), Time::max());
    Wait(L"middle", {}, queued);
    Wait(L"first", WithPriority(Priority::max()), Time::min());
    EXPECT_EQ(StartedAt(Time::max()), (Ids{L"first", L"middle", L"last"}));
    EXPECT_EQ(scheduler.Next(Time::min()), std::nullopt);
}

TEST_F(SchedulerTest, AJobOnHoldWaitsUntilItIsReleased) {
    Wait(L"a", OnHold());
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
    EXPECT_EQ(Why(L"a"), (Scheduler::WaitReason{Kind::Hold, {}}));
    Wait(L"a");
    EXPECT_EQ(scheduler.Next(now), L"a");
}

TEST_F(SchedulerTest, AJobWaitsForItsTime) {
    Wait(L"a", NotBefore(now + 10));
    EXPECT_EQ(scheduler.Next(now + 9), std::nullopt);
    EXPECT_EQ(scheduler.NextTime(), now + 10);
    EXPECT_EQ(Why(L"a", now + 9).kind, Kind::Time);
    EXPECT_EQ(scheduler.Next(now + 10), L"a");
    EXPECT_EQ(scheduler.NextTime(), std::nullopt);
}

TEST_F(SchedulerTest, AClockThatGoesBackTakesAJobsTimeBack) {
    Wait(L"a", NotBefore(now));
    Wait(L"b", NotBefore(now - 10));
    EXPECT_EQ(scheduler.Next(now), L"a");
    EXPECT_EQ(scheduler.Next(now - 1), L"b");
    EXPECT_EQ(scheduler.NextTime(), now);
    EXPECT_EQ(scheduler.Next(now - 11), std::nullopt);
    EXPECT_EQ(scheduler.NextTime(), now - 10);
}

TEST_F(SchedulerTest, TheNextTimeIsTheEarliestOfTheJobsThatWaitForNothingElse) {
    Scheduling held = NotBefore(now + 1);
    held.hold = true;
    Wait(L"held", held);
    Scheduling successor = NotBefore(now + 2);
    successor.after = {L"x"};
    Wait(L"successor", successor);
    Wait(L"later", NotBefore(now + 4));
    Wait(L"soon", NotBefore(now + 3));
    EXPECT_EQ(scheduler.NextTime(), now + 3);
    End(L"soon");
    EXPECT_EQ(scheduler.NextTime(), now + 4);
    End(L"x");
    EXPECT_EQ(scheduler.NextTime(), now + 2);
}

TEST_F(SchedulerTest, AJobStartsAfterAllItsPredecessorsHaveSucceeded) {
    Wait(L"c", After({L"a", L"b"}));
    Wait(L"other");
    EXPECT_EQ(scheduler.Predecessors(), (Ids{L"a", L"b"}));
    EXPECT_EQ(Why(L"c"), (Scheduler::WaitReason{Kind::Predecessor, L"a"}));
    End(L"a");
    EXPECT_EQ(Why(L"c"), (Scheduler::WaitReason{Kind::Predecessor, L"b"}));
    EXPECT_EQ(StartedAt(), Ids{L"other"});
    End(L"b");
    EXPECT_EQ(scheduler.Predecessors(), Ids());
    EXPECT_EQ(StartedAt(), Ids{L"c"});
}

TEST_F(SchedulerTest, AfterEndAcceptsAnyResult) {
    Wait(L"c", AfterEnd({L"a", L"b"}));
    End(L"a", false);
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
    End(L"b", true);
    EXPECT_EQ(scheduler.Next(now), L"c");
}

TEST_F(SchedulerTest, AFailedPredecessorStrandsThoseThatNeedItsSuccessAndTheirSuccessors) {
    Scheduling skipped = After({L"a"});
    skipped.skipIfAfterFails = true;
    Scheduling held = After({L"a"});
    held.hold = true;
    Wait(L"c", After({L"b", L"d"}));
    Wait(L"d", skipped);
    Wait(L"b", held);
    Wait(L"e", AfterEnd({L"d"}));
    Wait(L"f");
    EXPECT_EQ(scheduler.End(L"a", false), (Stranded{{L"d", L"a", true}, {L"b", L"a", false}, {L"c", L"d", false}}));
    EXPECT_EQ(scheduler.WhyWaiting(L"c", now), std::nullopt);
    EXPECT_EQ(scheduler.Predecessors(), Ids());
    EXPECT_EQ(StartedAt(), (Ids{L"e", L"f"}));
}

TEST_F(SchedulerTest, APredecessorInBothListsMustSucceed) {
    Scheduling both = After({L"a"});
    both.afterEnd = {L"a"};
    Wait(L"b", both);
    Wait(L"c", both);
    EXPECT_EQ(scheduler.End(L"a", false), (Stranded{{L"b", L"a", false}, {L"c", L"a", false}}));
    Wait(L"b", both);
    End(L"a", true);
    EXPECT_EQ(scheduler.Next(now), L"b");
}

TEST_F(SchedulerTest, ThePredecessorThatIsNamedTwiceEndsOnce) {
    Wait(L"b", After({L"a", L"a"}));
    End(L"a");
    EXPECT_EQ(scheduler.Next(now), L"b");
}

TEST_F(SchedulerTest, AWaitingJobThatLeavesTheListIsAPredecessorThatFailed) {
    Wait(L"a");
    Wait(L"b", After({L"a"}));
    EXPECT_EQ(scheduler.End(L"a", false), (Stranded{{L"b", L"a", false}}));
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
}

TEST_F(SchedulerTest, AJobThatWaitsForItselfWaitsUntilItIsEdited) {
    Wait(L"a", After({L"a"}));
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
    EXPECT_EQ(Why(L"a"), (Scheduler::WaitReason{Kind::Predecessor, L"a"}));
    Wait(L"a");
    EXPECT_EQ(scheduler.Next(now), L"a");
    Wait(L"a", After({L"a"}));
    EXPECT_EQ(scheduler.End(L"a", false), Stranded());
    EXPECT_EQ(scheduler.Predecessors(), Ids());
}

TEST_F(SchedulerTest, TheEndOfOneJobOfACycleStrandsTheOthersOnce) {
    Wait(L"a", After({L"b"}));
    Wait(L"b", After({L"c"}));
    Wait(L"c", After({L"a"}));
    EXPECT_EQ(scheduler.End(L"a", false), (Stranded{{L"c", L"a", false}, {L"b", L"c", false}}));
}

TEST_F(SchedulerTest, JobsStartWhileTheirNeedsAreFree) {
    Name({{L"gpu", 2}, {L"seat", 1}});
    Wait(L"a", Needing({{L"gpu", 1}, {L"seat", 1}}));
    Wait(L"b", Needing({{L"gpu", 1}, {L"seat", 1}}));
    Wait(L"c", Needing({{L"gpu", 2}}));
    Wait(L"d", Needing({{L"gpu", 1}}));
    Wait(L"e");
    EXPECT_EQ(StartedAt(), (Ids{L"a", L"d", L"e"}));
    EXPECT_EQ(Why(L"b"), (Scheduler::WaitReason{Kind::Resource, L"gpu"}));
    EXPECT_EQ(Why(L"c"), (Scheduler::WaitReason{Kind::Resource, L"gpu"}));
    End(L"a", false);
    EXPECT_EQ(Why(L"b").kind, Kind::Turn);
    EXPECT_EQ(StartedAt(), Ids{L"b"});
}

TEST_F(SchedulerTest, ANeedThatTheRulesDoNotNameNeverFits) {
    Wait(L"a", Needing({{L"gpu", 1}}));
    Wait(L"b", Needing({{L"gpu", 0}, {L"seat", -1}}));
    EXPECT_EQ(StartedAt(), Ids{L"b"});
    EXPECT_EQ(Why(L"a"), (Scheduler::WaitReason{Kind::Resource, L"gpu"}));
    Name({{L"gpu", 1}});
    EXPECT_EQ(StartedAt(), Ids{L"a"});
}

TEST_F(SchedulerTest, ANegativeNeedGivesNothingBack) {
    Name({{L"gpu", 1}});
    Wait(L"a", Needing({{L"gpu", -5}}));
    EXPECT_EQ(StartedAt(), Ids{L"a"});
    Wait(L"b", Needing({{L"gpu", 2}}));
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
}

TEST_F(SchedulerTest, AStartedJobKeepsWhatItTookAtItsStart) {
    Name({{L"gpu", 2}});
    Wait(L"a", Needing({{L"gpu", 2}}));
    StartAll();
    Wait(L"b", Needing({{L"gpu", 1}}));
    Name({{L"gpu", 1}});
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
    Name({});
    Name({{L"gpu", 2}});
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
    End(L"a");
    EXPECT_EQ(scheduler.Next(now), L"b");
}

TEST_F(SchedulerTest, AJobThatIsQueuedAgainGivesBackWhatItTook) {
    Name({{L"gpu", 1}});
    Wait(L"a", Needing({{L"gpu", 1}}));
    StartAll();
    Wait(L"a", Needing({{L"gpu", 1}}));
    EXPECT_EQ(scheduler.Next(now), L"a");
}

TEST_F(SchedulerTest, AResourceOfWhichMoreIsTakenThanExistsIsExhausted) {
    using Limits = std::numeric_limits<std::int64_t>;
    Name({{L"gpu", Limits::max()}});
    for (const wchar_t* id : {L"a", L"b", L"c", L"d"}) {
        Wait(id, Needing({{L"gpu", Limits::max()}}));
        scheduler.Start(id);
    }
    Wait(L"e", Needing({{L"gpu", 1}}));
    for (const wchar_t* id : {L"a", L"b", L"c"}) {
        End(id);
        EXPECT_EQ(scheduler.Next(now), std::nullopt) << id;
    }
    End(L"d");
    EXPECT_EQ(scheduler.Next(now), L"e");
}

TEST_F(SchedulerTest, ANegativeAmountOfAResourceIsNone) {
    Name({{L"gpu", std::numeric_limits<std::int64_t>::min()}});
    Wait(L"a", Needing({{L"gpu", 1}}));
    EXPECT_EQ(scheduler.Next(now), std::nullopt);
}

TEST_F(SchedulerTest, AJobBehindTheOneThatLacksAResourceStartsUntilThatOneIsOverdue) {
    Name({{L"gpu", 2}, {L"seat", 2}});
    Wait(L"running", Needing({{L"gpu", 1}, {L"seat", 1}}));
    StartAll();
    Wait(L"big", Needing({{L"gpu", 2}}));
    Wait(L"small", Needing({{L"gpu", 1}}));
    Wait(L"other", Needing({{L"seat", 1}}));
    EXPECT_EQ(scheduler.Next(overdue - 1), L"small");
    EXPECT_EQ(Why(L"small", overdue - 1).kind, Kind::Turn);
    EXPECT_EQ(scheduler.Next(overdue), L"other");
    EXPECT_EQ(Why(L"small", overdue), (Scheduler::WaitReason{Kind::Resource, L"gpu"}));
    End(L"running");
    EXPECT_EQ(StartedAt(overdue), (Ids{L"big", L"other"}));
}

TEST_F(SchedulerTest, AnOverdueJobSetsAsideWhatItDoesNotLackEither) {
    Name({{L"gpu", 1}, {L"seat", 2}});
    Wait(L"running", Needing({{L"gpu", 1}}));
    StartAll();
    Wait(L"both", Needing({{L"gpu", 1}, {L"seat", 1}}));
    Wait(L"one seat", Needing({{L"seat", 1}}));
    Wait(L"another seat", Needing({{L"seat", 1}}));
    EXPECT_EQ(StartedAt(overdue), Ids{L"one seat"});
    End(L"running");
    EXPECT_EQ(StartedAt(overdue), Ids{L"both"});
}

TEST_F(SchedulerTest, OnlyTheFirstOverdueJobOfEqualNeedsSetsThemAside) {
    Name({{L"gpu", 1}, {L"seat", 2}});
    Wait(L"running", Needing({{L"gpu", 1}}));
    StartAll();
    Wait(L"first", Needing({{L"gpu", 1}, {L"seat", 1}}));
    Wait(L"second", Needing({{L"gpu", 1}, {L"seat", 1}}));
    Wait(L"seat", Needing({{L"seat", 1}}));
    EXPECT_EQ(StartedAt(overdue), Ids{L"seat"});
}

TEST_F(SchedulerTest, AJobWhoseNeedsNeverFitBlocksNobody) {
    Name({{L"gpu", 2}});
    Wait(L"too big", Needing({{L"gpu", 3}}));
    Wait(L"unknown", Needing({{L"gpu", 1}, {L"x", 1}}));
    Wait(L"small", Needing({{L"gpu", 2}}));
    EXPECT_EQ(StartedAt(overdue), Ids{L"small"});
    EXPECT_EQ(Why(L"too big"), (Scheduler::WaitReason{Kind::Resource, L"gpu"}));
    EXPECT_EQ(Why(L"unknown"), (Scheduler::WaitReason{Kind::Resource, L"x"}));
}

TEST_F(SchedulerTest, AnEditChangesTheNeedsAndThePlaceOfAWaitingJob) {
    Name({{L"gpu", 1}});
    Wait(L"a", Needing({{L"gpu", 2}}));
    Wait(L"b");
    EXPECT_EQ(scheduler.Next(now), L"b");
    scheduler.Wait({L"a", 1, queued, Needing({{L"gpu", 1}})});
    EXPECT_EQ(scheduler.Next(now), L"a");
    scheduler.Wait({L"a", 3, queued, Needing({{L"gpu", 1}})});
    EXPECT_EQ(scheduler.Next(now), L"b");
}

TEST_F(SchedulerTest, ALongChainIsStrandedWithoutRecursion) {
    constexpr int length = 100'000;
    for (int job = 1; job <= length; ++job) {
        Wait(std::to_wstring(job), After({std::to_wstring(job - 1)}));
    }
    const Stranded stranded = scheduler.End(L"0", false);
    ASSERT_EQ(stranded.size(), std::size_t{length});
    EXPECT_EQ(stranded.back(), (Scheduler::Stranded{std::to_wstring(length), std::to_wstring(length - 1), false}));
}

TEST_F(SchedulerTest, ManyJobsWithManyKindsOfNeedsAllRun) {
    constexpr std::size_t count = 100'000;
    Name({{L"gpu", 8}, {L"seat", 5}});
    for (std::size_t job = 0; job < count; ++job) {
        Scheduling scheduling = Needing({{L"gpu", job % 9}, {L"seat", job % 6}});
        scheduling.priority = static_cast<std::int32_t>(job % 5);
        scheduling.notBefore = job % 7 == 0 ? now + static_cast<std::int64_t>(job) : 0;
        Wait(std::to_wstring(job), scheduling);
    }
    std::size_t ended = 0;
    for (Ids running = StartedAt(); !running.empty(); running = StartedAt(now + count)) {
        for (const std::wstring& id : running) {
            End(id);
        }
        ended += running.size();
    }
    EXPECT_EQ(ended, count);
}

} // namespace

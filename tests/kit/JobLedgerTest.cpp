#include "kit/JobLedger.h"

#include <gtest/gtest.h>

namespace {

using Problems = std::vector<std::string>;

/// A ledger with job 1 ("id1") of the acknowledged "request 1".
class JobLedgerTest : public testing::Test {
protected:
    JobLedgerTest() { Enqueue({{L"id1", 1}}); }

    void Enqueue(const std::vector<JobIdInfo>& jobs, const std::optional<JobLedger::UndisturbedEnd>& end = {}) {
        const std::wstring mark = ledger.NewMark();
        ledger.EnqueueAsked(mark, jobs.size(), end);
        Acknowledge(mark, jobs);
    }

    void Acknowledge(const std::wstring& mark, const std::vector<JobIdInfo>& jobs) {
        JobEnqueueResult result;
        result.requestId = mark;
        result.jobIds = jobs;
        ledger.EnqueueAcknowledged(mark, result);
    }

    static std::vector<JobStatusInfo> Change(const std::wstring& id, JobStatus status) {
        JobStatusInfo change;
        change.id = id;
        change.status = status;
        return {change};
    }

    void Tell(const std::wstring& id, JobStatus status) { ledger.Told(Change(id, status)); }

    static JobListInfo Row(const std::wstring& id, std::int32_t number, JobStatus status = JobStatus::Queued,
                           const std::wstring& mark = L"request 1") {
        JobListInfo row;
        row.id = id;
        row.seqId = number;
        row.status = status;
        row.extraText = mark;
        return row;
    }

    /// The problems since the last call.
    Problems TakeProblems() { return std::exchange(problems, {}); }

    Problems Compared(const std::vector<JobListInfo>& list) {
        ledger.Compare(list);
        return TakeProblems();
    }

    static constexpr auto deleted = static_cast<JobStatus>(-1);
    Problems problems;
    JobLedger ledger{JobLedger::Others::None, [this](const std::string& problem) { problems.push_back(problem); }};
};

TEST(JobLedgerTest_Restart, TheRuleDecidesAboutJobsThatHaveNotEnded) {
    using Restart = JobLedger::Restart;
    const auto statusAtStart = [](Restart rule, JobStatus listed) {
        return JobLedger(JobLedger::Others::None, {}, rule).StatusAtStart(listed);
    };
    for (const Restart rule : {Restart::Cancel, Restart::KeepWaiting, Restart::RunAgain}) {
        EXPECT_EQ(statusAtStart(rule, JobStatus::Success), JobStatus::Success);
        EXPECT_EQ(statusAtStart(rule, JobStatus::Dequeued), JobStatus::Dequeued);
        EXPECT_EQ(statusAtStart(rule, JobStatus::Canceling), JobStatus::Canceled);
    }
    EXPECT_EQ(statusAtStart(Restart::Cancel, JobStatus::Queued), JobStatus::Canceled);
    EXPECT_EQ(statusAtStart(Restart::KeepWaiting, JobStatus::Queued), JobStatus::Queued);
    EXPECT_EQ(statusAtStart(Restart::KeepWaiting, JobStatus::Running), JobStatus::Canceled);
    EXPECT_EQ(statusAtStart(Restart::RunAgain, JobStatus::Running), JobStatus::Queued);
}

TEST_F(JobLedgerTest, AListThatIsAsItWasToldHasNoProblem) {
    Tell(L"id1", JobStatus::Running);
    EXPECT_EQ(Compared({Row(L"id1", 1, JobStatus::Running)}), Problems{});
    Tell(L"id1", JobStatus::Failed);
    ledger.CompareAll({Row(L"id1", 1, JobStatus::Failed)});
    EXPECT_EQ(TakeProblems(), Problems{});
}

TEST_F(JobLedgerTest, AJobMayBeLostOnlyWhenItsDeletionWasAskedFor) {
    EXPECT_EQ(Compared({}), Problems{"Job 1 (id1, request 1) is lost"});
    ledger.DeletionAsked({L"id1"});
    EXPECT_EQ(Compared({}), Problems{});
    ledger.DeletionAcknowledged({});
    EXPECT_EQ(Compared({}), Problems{"Job 1 (id1, request 1) is lost"});
}

TEST_F(JobLedgerTest, ADeletedJobDoesNotComeBack) {
    Tell(L"id1", deleted);
    EXPECT_EQ(Compared({}), Problems{});
    EXPECT_EQ(Compared({Row(L"id1", 1)}), (Problems{"1 jobs of the list were neither asked for nor told of: request 1",
                                                    "Job 1 (id1) was deleted, and is back in the list"}));
    Tell(L"id1", JobStatus::Running);
    EXPECT_EQ(TakeProblems(), Problems{"Job 0 (id1, ) was deleted, and is Running"});
}

TEST_F(JobLedgerTest, OnlyWhatIsThereIsDeletedAndOnce) {
    Tell(L"id1", deleted);
    ledger.DeletionAcknowledged({L"id1"});
    EXPECT_EQ(TakeProblems(), Problems{});
    ledger.DeletionAcknowledged({L"id1", L"id2"});
    EXPECT_EQ(TakeProblems(),
              (Problems{"Job id1 was deleted, and was not there", "Job id2 was deleted, and was not there"}));
}

TEST_F(JobLedgerTest, NumberAndRequestOfAJobStay) {
    EXPECT_EQ(Compared({Row(L"id1", 2, JobStatus::Queued, L"request 7")}),
              (Problems{"Job 1 (id1, request 1) is number 2 in the list",
                        "Job 1 (id1, request 1) is of request 7 in the list"}));
}

TEST_F(JobLedgerTest, AnEndIsKept) {
    Tell(L"id1", JobStatus::Success);
    EXPECT_EQ(Compared({Row(L"id1", 1, JobStatus::Failed)}),
              Problems{"Job 1 (id1, request 1) has ended as Success, and is Failed in the list"});
    EXPECT_EQ(Compared({Row(L"id1", 1, JobStatus::Running)}),
              Problems{"Job 1 (id1, request 1) has ended as Success, and is Running in the list"});
    Tell(L"id1", JobStatus::Running);
    EXPECT_EQ(TakeProblems(), Problems{"Job 1 (id1, request 1) has ended as Success, and is Running again"});
}

TEST_F(JobLedgerTest, ACancelledJobMayStillRunInTheListOfADeadHost) {
    Tell(L"id1", JobStatus::Canceled);
    EXPECT_EQ(Compared({Row(L"id1", 1, JobStatus::Canceling)}), Problems{});
    ledger.CompareAll({Row(L"id1", 1, JobStatus::Canceling)});
    EXPECT_EQ(TakeProblems(), Problems{"Job 1 (id1, request 1) is Canceling in the list, and was told to be Canceled"});
}

TEST_F(JobLedgerTest, ADequeuedJobHasNotStarted) {
    Tell(L"id1", JobStatus::Dequeued);
    JobListInfo row = Row(L"id1", 1, JobStatus::Dequeued);
    EXPECT_EQ(Compared({row}), Problems{});
    row.startTime = L"2026-03-05T07:08:09Z";
    EXPECT_EQ(Compared({row}), Problems{"Job 1 (id1, request 1) was cancelled before it started, and did"});
}

TEST_F(JobLedgerTest, IdsAndNumbersAreHandedOutOnce) {
    Enqueue({{L"id1", 2}});
    EXPECT_EQ(TakeProblems(), Problems{"Job 2 (id1, request 2) has an id that was handed out before"});
    Enqueue({{L"id3", 2}});
    EXPECT_EQ(TakeProblems(), Problems{"Job 2 (id3, request 3) has a number that was handed out before"});
    Enqueue({{L"", 3}});
    EXPECT_EQ(TakeProblems(), Problems{"Job 3 (, request 4) was refused"});
}

TEST_F(JobLedgerTest, NumbersStartAgainWhenNoJobIsLeft) {
    Tell(L"id1", deleted);
    Enqueue({{L"id2", 1}});
    EXPECT_EQ(TakeProblems(), Problems{});
}

TEST_F(JobLedgerTest, AnAnswerIsOfItsRequestAndWhole) {
    ledger.EnqueueAsked(L"request 2", 2);
    JobEnqueueResult result;
    result.requestId = L"request 1";
    result.jobIds = {{L"id2", 2}};
    ledger.EnqueueAcknowledged(L"request 2", result);
    EXPECT_EQ(TakeProblems(), Problems{"request 2 for 2 jobs was answered with 1 as request 1"});
}

TEST_F(JobLedgerTest, AnUnansweredRequestIsListedWholeOrNotAtAll) {
    ledger.EnqueueAsked(L"request 2", 2);
    const JobListInfo known = Row(L"id1", 1);
    const JobListInfo second = Row(L"id2", 2, JobStatus::Queued, L"request 2");
    const JobListInfo third = Row(L"id3", 3, JobStatus::Queued, L"request 2");
    EXPECT_EQ(Compared({known}), Problems{});
    EXPECT_EQ(Compared({known, second, third}), Problems{});
    EXPECT_EQ(Compared({known, second}), Problems{"request 2 is in the list in part"});
    Tell(L"id2", JobStatus::Running);
    EXPECT_EQ(Compared({known, second}), Problems{"request 2 is in the list in part"});
    Acknowledge(L"request 2", {{L"id2", 2}, {L"id3", 3}});
    EXPECT_EQ(Compared({known, second, third}), Problems{});
}

TEST_F(JobLedgerTest, OnlyWhereThereAreOthersMayJobsBeNobodys) {
    const std::vector<JobListInfo> list = {Row(L"id1", 1), Row(L"id2", 2, JobStatus::Running, L"another's")};
    const Problems unknown = {"1 jobs of the list were neither asked for nor told of: another's"};
    EXPECT_EQ(Compared(list), unknown);
    Tell(L"id2", JobStatus::Running);
    EXPECT_EQ(Compared(list), unknown);
    JobLedger shared(JobLedger::Others::Some, [this](const std::string& problem) { problems.push_back(problem); });
    shared.Compare({list[1]});
    EXPECT_EQ(TakeProblems(), unknown);
    shared.Told(Change(L"id2", JobStatus::Running));
    shared.Compare({list[1]});
    EXPECT_EQ(TakeProblems(), Problems{});
}

TEST_F(JobLedgerTest, AJobThatNobodyDisturbsEndsAsItsKindDoes) {
    const JobLedger::UndisturbedEnd waits{"waits", std::nullopt};
    const JobLedger::UndisturbedEnd succeeds{"succeeds", JobStatus::Success};
    Enqueue({{L"id2", 2}, {L"id3", 3}}, succeeds);
    Enqueue({{L"id4", 4}, {L"id5", 5}}, waits);
    Tell(L"id2", JobStatus::Success);
    ledger.Disturb(L"id3");
    Tell(L"id3", JobStatus::Canceled);
    ledger.Disturb(L"id4");
    Tell(L"id4", JobStatus::Canceled);
    EXPECT_EQ(TakeProblems(), Problems{});
    Tell(L"id5", JobStatus::Success);
    EXPECT_EQ(TakeProblems(), Problems{"Job 5 (id5, request 3) of the kind waits has ended undisturbed as Success"});
    EXPECT_EQ(ledger.Ends(), (std::map<std::string, int>{{"Success", 2}, {"Canceled", 2}}));
}

TEST_F(JobLedgerTest, AListIsInTheOrderOfItsNumbersEachOnce) {
    EXPECT_EQ(OrderProblems({Row(L"id1", 1), Row(L"id2", 2)}, {}), Problems{});
    EXPECT_EQ(OrderProblems({Row(L"id2", 2), Row(L"id1", 1)}, {}),
              Problems{"Job 1 (id1) is out of order in the list, behind job 2"});
    EXPECT_EQ(OrderProblems({Row(L"id1", 1), Row(L"id1", 2)}, {}), Problems{"Job 2 (id1) is in the list twice"});
    EXPECT_EQ(OrderProblems({Row(L"id1", 1), Row(L"id2", 1)}, {}),
              Problems{"Job 1 (id2) is out of order in the list, behind job 1"});
}

TEST_F(JobLedgerTest, AnAdoptedListIsWhatHoldsFromThenOn) {
    ledger.EnqueueAsked(L"request 2", 1);
    ledger.Adopt({Row(L"id7", 7, JobStatus::Canceled, L"request 2")});
    EXPECT_EQ(Compared({Row(L"id7", 7, JobStatus::Canceled, L"request 2")}), Problems{});
    EXPECT_EQ(Compared({}), Problems{"Job 7 (id7, request 2) is lost"});
    Enqueue({{L"id8", 7}});
    EXPECT_EQ(TakeProblems(), Problems{"Job 7 (id8, request 2) has a number that was handed out before"});
}

} // namespace

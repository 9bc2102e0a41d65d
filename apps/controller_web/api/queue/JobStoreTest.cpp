#include "controller_web/api/queue/JobStore.h"

#include <gtest/gtest.h>

namespace {

front_end::JobRow RowOf(std::int32_t number, JobStatus status = JobStatus::Queued) {
    front_end::JobRow row;
    row.job.id = L"id" + std::to_wstring(number);
    row.job.seqId = number;
    row.job.status = status;
    return row;
}

std::vector<std::int32_t> NumbersOf(const web::Snapshot& snapshot) {
    std::vector<std::int32_t> numbers;
    for (const web::Row& row : *snapshot.rows) {
        numbers.push_back(row->job.seqId);
    }
    return numbers;
}

TEST(JobStoreTest, JobsAreInTheOrderOfTheirNumbers) {
    web::JobStore store;
    for (const std::int32_t number : {5, 1, 9, 3}) {
        EXPECT_TRUE(store.Put(RowOf(number)));
    }
    EXPECT_EQ(NumbersOf(store.Take()), (std::vector<std::int32_t>{1, 3, 5, 9}));
}

TEST(JobStoreTest, ASnapshotStaysAsItWas) {
    web::JobStore store;
    store.Put(RowOf(1));
    store.Put(RowOf(2));
    const web::Snapshot before = store.Take();
    store.Put(RowOf(1, JobStatus::Running));
    store.Remove(L"id2");
    EXPECT_EQ(NumbersOf(before), (std::vector<std::int32_t>{1, 2}));
    EXPECT_EQ(before.rows->front()->job.status, JobStatus::Queued);
    EXPECT_EQ(NumbersOf(store.Take()), std::vector<std::int32_t>{1});
    EXPECT_EQ(before.counts.queued, 2);
    EXPECT_EQ(store.Take().counts.running, 1);
}

TEST(JobStoreTest, UnchangedRowsAreShared) {
    web::JobStore store;
    store.Put(RowOf(1));
    store.Put(RowOf(2));
    const web::Snapshot before = store.Take();
    EXPECT_EQ(store.Take().rows, before.rows);
    EXPECT_FALSE(store.Put(RowOf(2)));
    EXPECT_EQ(store.Take().rows, before.rows);
    store.Put(RowOf(2, JobStatus::Failed));
    EXPECT_EQ(store.Take().rows->front(), before.rows->front());
}

TEST(JobStoreTest, JobsAreFoundByIdAndNumber) {
    web::JobStore store;
    store.Put(RowOf(7));
    EXPECT_EQ(store.Find(L"id7"), store.Find(L"7"));
    EXPECT_NE(store.Find(L"7"), nullptr);
    EXPECT_EQ(store.Find(L"8"), nullptr);
    EXPECT_EQ(store.Find(L""), nullptr);
}

TEST(JobStoreTest, RemovedJobsCanComeAgain) {
    web::JobStore store;
    store.Put(RowOf(1));
    store.Put(RowOf(2));
    EXPECT_TRUE(store.Remove(L"id1"));
    EXPECT_FALSE(store.Remove(L"id1"));
    EXPECT_EQ(store.Find(L"1"), nullptr);
    store.Put(RowOf(1));
    EXPECT_EQ(NumbersOf(store.Take()), (std::vector<std::int32_t>{1, 2}));
    EXPECT_EQ(store.Find(L"id2")->job.seqId, 2);
}

TEST(JobStoreTest, AListReplacesTheOneBefore) {
    web::JobStore store;
    store.Put(RowOf(1));
    store.Put(RowOf(2));
    store.Replace({std::make_shared<const front_end::JobRow>(RowOf(3, JobStatus::Failed))});
    EXPECT_EQ(NumbersOf(store.Take()), std::vector<std::int32_t>{3});
    EXPECT_EQ(store.Take().counts.queued, 0);
    EXPECT_EQ(store.FindId(L"id1"), nullptr);
}

TEST(JobStoreTest, EveryStatusCounts) {
    web::JobStore store;
    std::int32_t number = 0;
    for (const JobStatus status : {JobStatus::Queued, JobStatus::Running, JobStatus::Canceling, JobStatus::Success,
                                   JobStatus::Failed, JobStatus::Canceled, JobStatus::Dequeued}) {
        store.Put(RowOf(++number, status));
    }
    const front_end::JobCounts counts = store.Take().counts;
    EXPECT_EQ(counts.queued, 1);
    EXPECT_EQ(counts.running, 2);
    EXPECT_EQ(counts.succeeded, 1);
    EXPECT_EQ(counts.failed, 1);
    EXPECT_EQ(counts.cancelled, 2);
}

} // namespace

#include "engine/RecordCopies.h"

#include <gtest/gtest.h>

namespace {

using Records = RecordCopies::Records;
using Entries = RecordCopies::Entries;
using Time = RecordCopies::Time;

JobListInfo Record(std::int32_t number) {
    JobListInfo record;
    record.id = L"id_" + std::to_wstring(number);
    record.seqId = number;
    record.inputFiles = {L"C:\\in\\part_" + std::to_wstring(number) + L".stl"};
    return record;
}

std::shared_ptr<JobEntry> Entry(std::int32_t number) {
    return std::make_shared<JobEntry>(Record(number));
}

Records Updated(Records records, const Entries& entries) {
    RecordCopies::Update(records, entries);
    return records;
}

TEST(RecordCopiesTest, CopiesBecomeThoseOfTheListWhateverTheyWereBefore) {
    const Entries entries{Entry(1), Entry(2), Entry(3)};
    const Records all{Record(1), Record(2), Record(3)};
    EXPECT_EQ(Updated({}, entries), all);
    EXPECT_EQ(Updated(all, entries), all);
    EXPECT_EQ(Updated({Record(3), Record(1)}, entries), all);
    EXPECT_EQ(Updated({Record(9), Record(1), Record(2), Record(3)}, entries), all);
    EXPECT_EQ(Updated(all, {}), Records());
}

TEST(RecordCopiesTest, EachMemberOfAChangedRecordIsCopied) {
    const Entries entries{Entry(1)};
    Records records{Record(1)};
    records[0].scenario.inputs = {{L"STL", {L"stl"}}};
    records[0].inputFiles.clear();
    records[0].progress = 7;
    records[0].extraText = L"old";
    EXPECT_EQ(Updated(records, entries), Records{Record(1)});
}

TEST(RecordCopiesTest, WhatIsTakenIsTakenByOneOnly) {
    RecordCopies copies;
    copies.Keep({Record(1)}, Time());
    EXPECT_EQ(copies.Take(), Records{Record(1)});
    EXPECT_EQ(copies.Take(), Records());
}

TEST(RecordCopiesTest, CopiesThatHaveRestedAreReleased) {
    RecordCopies copies;
    const Time begin;
    copies.Keep({Record(1)}, begin);
    copies.ReleaseRested(begin + RecordCopies::longestRest - std::chrono::nanoseconds(1));
    EXPECT_EQ(copies.Take(), Records{Record(1)});
    copies.Keep({Record(1)}, begin);
    copies.ReleaseRested(begin + RecordCopies::longestRest);
    EXPECT_EQ(copies.Take(), Records());
}

TEST(RecordCopiesTest, ListThatHasBecomeShortGivesItsMemoryBack) {
    Records records(1000, Record(1));
    RecordCopies::Update(records, {Entry(1), Entry(2)});
    EXPECT_LT(records.capacity(), 1000U);
}

} // namespace

#include "formats/JobListJournal.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobListFile.h"
#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using job_list_journal::Found;
using job_list_journal::Journal;

ListedJob Row(const std::wstring& id, int progress = 0) {
    ListedJob row{};
    row.id = id;
    row.progress = progress;
    return row;
}

class JobListJournalTest : public testing::Test {
protected:
    JobListJournalTest() { EXPECT_TRUE(journal.Begin(path, L"one")); }

    void Append(const std::vector<ListedJob>& changed, const std::vector<std::wstring>& deleted = {}) {
        job_list_journal::Rows rows;
        for (const ListedJob& row : changed) {
            rows.push_back(&row);
        }
        EXPECT_TRUE(journal.Append(rows, deleted));
    }

    Found Apply(std::vector<ListedJob>& records, const std::wstring& snapshotId = L"one") {
        return job_list_journal::Apply(path, snapshotId, records, problem);
    }

    static std::string LastLine(const std::string& content) {
        return content.substr(content.rfind('\n', content.size() - 2) + 1);
    }

    std::string Content() const {
        std::string content;
        EXPECT_TRUE(platform::ReadFile(path, 1 << 20, content));
        return content;
    }

    const TemporaryDirectory directory;
    const std::wstring list = directory / L"job_list.json";
    const std::wstring path = job_list_journal::PathOf(list);
    Journal journal;
    std::wstring problem;
};

/// A journal with its snapshot.
class JobListJournalTest_List : public JobListJournalTest {
protected:
    bool WriteSnapshot(const std::vector<ListedJob>& rows, const std::wstring& snapshotId = L"one") const {
        auto row = rows.begin();
        const auto next = [&]() -> const JobListInfo* { return row == rows.end() ? nullptr : &*row++; };
        return job_list_file::WriteRows(list, rows.size(), next, snapshotId);
    }

    std::vector<ListedJob> Read() const {
        std::vector<ListedJob> rows;
        EXPECT_TRUE(job_list_file::ReadRows(list, rows));
        return rows;
    }

    const LogCapture log;
};

TEST_F(JobListJournalTest, ChangesAreAppliedInOrder) {
    Append({Row(L"b", 5), Row(L"c")});
    Append({Row(L"c", 7)}, {L"a"});
    std::vector<ListedJob> records = {Row(L"a"), Row(L"b")};
    EXPECT_EQ(Apply(records), Found::Changes);
    EXPECT_EQ(records, (std::vector{Row(L"b", 5), Row(L"c", 7)}));
}

TEST_F(JobListJournalTest, ADeletedIdMayBeAddedAgain) {
    Append({}, {L"a"});
    Append({Row(L"a", 3)});
    std::vector<ListedJob> records = {Row(L"a"), Row(L"b")};
    EXPECT_EQ(Apply(records), Found::Changes);
    EXPECT_EQ(records, (std::vector{Row(L"b"), Row(L"a", 3)}));
}

TEST_F(JobListJournalTest, TheJournalOfAnotherSnapshotHasNoEffect) {
    Append({Row(L"b")});
    std::vector<ListedJob> records = {Row(L"a")};
    EXPECT_EQ(Apply(records, L"two"), Found::Nothing);
    EXPECT_EQ(records, std::vector{Row(L"a")});
}

TEST_F(JobListJournalTest, AJournalThatIsCutAnywhereGivesAWholeNumberOfChanges) {
    std::vector<std::size_t> ends = {Content().size()};
    for (int change = 1; change <= 3; ++change) {
        Append({Row(L"x", change), Row(L"y", change)});
        ends.push_back(Content().size());
    }
    const std::string whole = Content();
    journal.Close();
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        WriteTextFile(path, whole.substr(0, length));
        std::vector<ListedJob> records;
        const int complete = static_cast<int>(std::upper_bound(ends.begin(), ends.end(), length) - ends.begin()) - 1;
        EXPECT_EQ(Apply(records), complete < 0 ? Found::Nothing : Found::Changes) << length;
        const auto expected =
            complete < 1 ? std::vector<ListedJob>() : std::vector{Row(L"x", complete), Row(L"y", complete)};
        EXPECT_EQ(records, expected) << length;
    }
}

TEST_F(JobListJournalTest, ADamagedLineBeforeTheLastOneIsTold) {
    Append({Row(L"x")});
    const std::size_t end = Content().size();
    Append({Row(L"y")});
    std::string content = Content();
    content[end - 3] ^= 1;
    journal.Close();
    WriteTextFile(path, content);
    std::vector<ListedJob> records;
    EXPECT_EQ(Apply(records), Found::Damaged);
    EXPECT_NE(problem.find(L"line 2"), std::wstring::npos) << testing::PrintToString(problem);
}

TEST_F(JobListJournalTest, RowsWithTheSameIdAreKept) {
    Append({Row(L"b")});
    std::vector<ListedJob> records = {Row(L"a", 1), Row(L"a", 2)};
    EXPECT_EQ(Apply(records), Found::Changes);
    EXPECT_EQ(records, (std::vector{Row(L"a", 1), Row(L"a", 2), Row(L"b")}));
}

TEST_F(JobListJournalTest, AJournalThatOthersChangedTakesNoMoreChanges) {
    platform::File other;
    EXPECT_TRUE(other.OpenForAppending(path, false, platform::AppendTo::RegularFile));
    EXPECT_TRUE(other.Write("x"));
    const ListedJob row = Row(L"a");
    EXPECT_FALSE(journal.Append({&row}, {}));
}

TEST_F(JobListJournalTest_List, AReaderSeesSnapshotAndJournal) {
    ASSERT_TRUE(WriteSnapshot({Row(L"a"), Row(L"b")}));
    Append({Row(L"b", 5), Row(L"c")}, {L"a"});
    EXPECT_EQ(Read(), (std::vector{Row(L"b", 5), Row(L"c")}));
}

TEST_F(JobListJournalTest_List, ASnapshotWithAJournalHasAVersionThatOlderProgramsRefuse) {
    ASSERT_TRUE(WriteSnapshot({Row(L"a")}));
    EXPECT_EQ(ReadTextFile(list).rfind(R"({"version":2,"snapshotId":"one","JobList":[)", 0), 0U);
    EXPECT_TRUE(job_list_file::CheckUsable(list, problem)) << problem;
}

TEST_F(JobListJournalTest_List, AListThatIsWrittenWholeMakesTheJournalStale) {
    ASSERT_TRUE(WriteSnapshot({Row(L"a")}));
    Append({Row(L"b")});
    const JobListInfo job = Row(L"c");
    ASSERT_TRUE(
        ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", std::vector{job}), list));
    EXPECT_EQ(Read(), std::vector<ListedJob>{job});
}

TEST_F(JobListJournalTest_List, ADamagedJournalIsKeptAsideWithItsSnapshot) {
    ASSERT_TRUE(WriteSnapshot({Row(L"old")}, L"zero"));
    ASSERT_TRUE(WriteSnapshot({Row(L"a")}));
    Append({Row(L"x")});
    Append({Row(L"y")});
    const std::string content = Content();
    const std::string damaged = content.substr(0, content.find('\n') + 1) + "no change\n" + LastLine(content);
    journal.Close();
    WriteTextFile(path, damaged);
    EXPECT_EQ(Read(), std::vector{Row(L"old")});
    const std::vector<std::wstring> kept = job_list_file::KeptAside(list);
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(ReadTextFile(kept[1]), damaged);
    EXPECT_NE(log.Text().find("line 2"), std::string::npos) << log.Text();
}

/// The reader may find the journal of the next snapshot behind the snapshot that it has read.
TEST_F(JobListJournalTest_List, ReadersSeeEachChangeWhileTheJournalIsFolded) {
    std::atomic<int> written = 0;
    ASSERT_TRUE(WriteSnapshot({Row(L"a")}));
    std::thread writer([&] {
        for (int change = 1; change <= 300; ++change) {
            if (change % 3 == 0) {
                EXPECT_TRUE(WriteSnapshot({Row(L"a", change)}, std::to_wstring(change)));
                EXPECT_TRUE(journal.Begin(path, std::to_wstring(change)));
            } else {
                Append({Row(L"a", change)});
            }
            written = change;
        }
    });
    while (written < 300) {
        const int before = written;
        const std::vector<ListedJob> rows = Read();
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_GE(rows[0].progress, before);
    }
    writer.join();
}

} // namespace

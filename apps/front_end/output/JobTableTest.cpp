#include "front_end/output/JobTable.h"

#include "kit/front_end/CommandContextFixture.h"
#include "platform/files/NativePath.h"

namespace {

using front_end::JobRow;
using front_end::ProgressKind;

class JobTableTest : public CommandContextFixture {
protected:
    static JobRow View(std::int32_t number, JobStatus status) {
        return front_end::ViewOf(Job(number, L"part.stl", status));
    }

    std::vector<std::wstring> Lines(const std::vector<const JobRow*>& jobs, std::optional<std::size_t> width,
                                    ProgressKind kind = ProgressKind::Percent) {
        return front_end::JobTableLines(context, jobs, kind, width);
    }
};

TEST_F(JobTableTest, OutputDirectoriesCanBeToldApartOnANarrowTerminal) {
    JobRow first = View(1, JobStatus::Success);
    JobRow second = View(2, JobStatus::Success);
    first.outputFolder = L"/home/ann/projects/reports/of/this/year/part";
    second.outputFolder = L"/home/ann/projects/reports/of/this/year/part_1";
    const auto lines = Lines({&first, &second}, 80);
    EXPECT_TRUE(lines[1].ends_with(platform::ToNativeText(L"/year/part"))) << text::ToUtf8(lines[1]);
    EXPECT_TRUE(lines[2].ends_with(platform::ToNativeText(L"/year/part_1"))) << text::ToUtf8(lines[2]);
    EXPECT_NE(lines[1].find(L'\x2026'), std::wstring::npos);
}

TEST_F(JobTableTest, ASuccessWithoutADirectoryShowsItsMessage) {
    JobRow view = View(1, JobStatus::Success);
    view.outputFolder.clear();
    view.message = L"Nothing to do";
    EXPECT_TRUE(Lines({&view}, std::nullopt)[1].ends_with(L"Nothing to do"));
}

TEST_F(JobTableTest, ProgressIsTheViews) {
    JobRow view = View(1, JobStatus::Canceled);
    view.job.progress = 100;
    view.progress = 30;
    EXPECT_NE(Lines({&view}, std::nullopt)[1].find(L" 30 %"), std::wstring::npos);
    EXPECT_NE(Lines({&view}, std::nullopt, ProgressKind::Bar)[1].find(L"[######..............]  30 %"),
              std::wstring::npos);
    EXPECT_EQ(front_end::JobLine(context, view), L"Job 1 Canceled, 30 %, Mesh report, part.stl");
}

TEST_F(JobTableTest, TimesHaveHoursOnlyFromOneHourOn) {
    const std::pair<const wchar_t*, std::string> starts[] = {{L"2026-03-05T07:09:53Z", "  0:07  "},
                                                             {L"2026-03-05T06:10:01Z", "  59:59  "},
                                                             {L"2026-03-05T06:07:57Z", "  1:02:03  "}};
    for (const auto& [start, time] : starts) {
        JobRow view = View(1, JobStatus::Running);
        view.job.startTime = start;
        EXPECT_NE(text::ToUtf8(Lines({&view}, std::nullopt)[1]).find("0 %" + time), std::string::npos) << time;
    }
}

TEST_F(JobTableTest, AStateHasItsColour) {
    console.hasColours = true;
    const std::pair<JobStatus, const wchar_t*> states[] = {{JobStatus::Running, L"\x1b[36mRunning"},
                                                           {JobStatus::Success, L"\x1b[32mSuccess"},
                                                           {JobStatus::Failed, L"\x1b[31mFailed"},
                                                           {JobStatus::Canceling, L"\x1b[33mCanceling"},
                                                           {JobStatus::Queued, L"  Queued"}};
    for (const auto& [status, shown] : states) {
        const JobRow view = View(1, status);
        EXPECT_NE(Lines({&view}, std::nullopt)[1].find(shown), std::wstring::npos) << JobStatusString(status);
    }
}

TEST_F(JobTableTest, AnInputSetIsItsFirstFileAndHowManyMore) {
    JobListInfo job = Job(1, L"a.stl", JobStatus::Queued);
    EXPECT_EQ(front_end::InputText(job), L"a.stl");
    job.inputFiles.resize(3);
    EXPECT_EQ(front_end::InputText(job), L"a.stl +2");
    job.inputFiles.clear();
    EXPECT_EQ(front_end::InputText(job), L"");
}

TEST_F(JobTableTest, MessagesWithoutRoomInTheTableAreLines) {
    JobRow failed = View(1, JobStatus::Failed);
    failed.messages = {L"shown in the table", L"second\nits next line"};
    JobRow succeeded = View(2, JobStatus::Success);
    succeeded.outputFolder = L"/out";
    succeeded.messages = {L"first"};
    EXPECT_EQ(front_end::MessageLines(context, {failed, succeeded}),
              (std::vector<std::wstring>{L"Job 1: second", L"  its next line", L"Job 2: first"}));
}

TEST_F(JobTableTest, MessagesOfAJobWithoutAnyAreNoLines) {
    EXPECT_TRUE(front_end::MessageLines(context, {View(1, JobStatus::Success), View(2, JobStatus::Failed)}).empty());
}

TEST_F(JobTableTest, SummariesCountEveryJobOnce) {
    const std::vector<JobRow> jobs = {View(1, JobStatus::Queued),   View(2, JobStatus::Running),
                                      View(3, JobStatus::Success),  View(4, JobStatus::Failed),
                                      View(5, JobStatus::Dequeued), View(6, JobStatus::Canceling),
                                      View(7, JobStatus::Canceled)};
    EXPECT_EQ(front_end::QueueSummary(context, jobs), L"Queued: 1, running: 2, ended: 4");
    const std::vector<JobRow> ended = {jobs[2], jobs[3], jobs[4], jobs[6]};
    EXPECT_EQ(front_end::OutcomeSummary(context, ended), L"Succeeded: 1, failed: 1, cancelled: 2");
}

} // namespace

#include "controller_cli/JobTable.h"

#include "FrontEndFixture.h"
#include "platform/files/NativePath.h"

namespace {

using controller_cli::JobRow;
using controller_cli::ProgressKind;

class JobTableTest : public FrontEndFixture {
protected:
    JobTableTest() : texts(stringResourceFile) {}

    static JobRow View(std::int32_t number, JobStatus status) {
        return controller_cli::ViewOf(Job(number, L"part.stl", status));
    }

    std::vector<std::wstring> Lines(const std::vector<const JobRow*>& jobs, std::optional<std::size_t> width,
                                    ProgressKind kind = ProgressKind::Percent) {
        return controller_cli::JobTableLines(context, jobs, kind, width);
    }

    const controller_cli::Texts texts;
    controller_cli::CommandContext context{console, texts, host, nullptr, patience, [] { return std::int64_t{0}; }};
};

TEST_F(JobTableTest, OutputFoldersCanBeToldApartOnANarrowTerminal) {
    JobRow first = View(1, JobStatus::Success);
    JobRow second = View(2, JobStatus::Success);
    first.outputFolder = L"/home/ann/projects/reports/of/this/year/part";
    second.outputFolder = L"/home/ann/projects/reports/of/this/year/part_1";
    const auto lines = Lines({&first, &second}, 80);
    EXPECT_TRUE(lines[1].ends_with(platform::ToNativeText(L"/year/part"))) << text::ToUtf8(lines[1]);
    EXPECT_TRUE(lines[2].ends_with(platform::ToNativeText(L"/year/part_1"))) << text::ToUtf8(lines[2]);
    EXPECT_NE(lines[1].find(L'\x2026'), std::wstring::npos);
}

TEST_F(JobTableTest, ASuccessWithoutAFolderShowsItsMessage) {
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
    EXPECT_EQ(controller_cli::JobLine(context, view), L"Job 1 Canceled, 30 %, Mesh report, part.stl");
}

TEST_F(JobTableTest, MessagesOfAJobWithoutAnyAreNoLines) {
    EXPECT_TRUE(
        controller_cli::MessageLines(context, {View(1, JobStatus::Success), View(2, JobStatus::Failed)}).empty());
}

TEST_F(JobTableTest, SummariesCountEveryJobOnce) {
    const std::vector<JobRow> jobs = {View(1, JobStatus::Queued),   View(2, JobStatus::Running),
                                      View(3, JobStatus::Success),  View(4, JobStatus::Failed),
                                      View(5, JobStatus::Dequeued), View(6, JobStatus::Canceling),
                                      View(7, JobStatus::Canceled)};
    EXPECT_EQ(controller_cli::QueueSummary(context, jobs), L"Queued: 1, running: 2, ended: 4");
    const std::vector<JobRow> ended = {jobs[2], jobs[3], jobs[4], jobs[6]};
    EXPECT_EQ(controller_cli::OutcomeSummary(context, ended), L"Succeeded: 1, failed: 1, cancelled: 2");
}

} // namespace

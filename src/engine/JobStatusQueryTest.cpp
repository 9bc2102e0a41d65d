#include "kit/engine/EngineFixture.h"

namespace {

constexpr auto unknown = static_cast<JobStatus>(-1);

class JobStatusQueryTest : public EngineFixture {
protected:
    JobStatusQueryTest() {
        Start({SavedJob(3, JobStatus::Success), SavedJob(5, JobStatus::Failed)});
        companion.Forget();
    }

    std::vector<JobStatusInfo> Ask(const std::vector<std::wstring>& ids) {
        std::vector<JobStatusInfo> statuses;
        EXPECT_TRUE(engine->CheckJobStatus(ids, statuses));
        return statuses;
    }

    JobStatusInfo StatusNamed(std::int32_t seqId, const std::wstring& id) {
        JobStatusInfo status = Job(seqId).GetJobStatusInfo();
        status.id = id;
        return status;
    }
};

TEST_F(JobStatusQueryTest, JobIsFoundByItsId) {
    EXPECT_EQ(Ask({L"saved5"}), std::vector{Job(5).GetJobStatusInfo()});
}

TEST_F(JobStatusQueryTest, JobAskedForByItsNumberIsReportedWithTheNumberAsId) {
    EXPECT_EQ(Ask({L"3"}), std::vector{StatusNamed(3, L"3")});
}

TEST_F(JobStatusQueryTest, UnknownIdHasStatusMinusOne) {
    const std::vector<JobStatusInfo> statuses = Ask({L"nobody"});
    ASSERT_EQ(statuses.size(), 1U);
    EXPECT_EQ(statuses[0].id, L"nobody");
    EXPECT_EQ(statuses[0].status, unknown);
}

TEST_F(JobStatusQueryTest, UnknownIdKeepsWhateverElseTheElementHad) {
    std::vector<JobStatusInfo> statuses(1);
    statuses[0].progress = 55;
    statuses[0].outputDir = L"kept";
    engine->CheckJobStatus({L"nobody"}, statuses);
    EXPECT_EQ(statuses[0].progress, 55);
    EXPECT_EQ(statuses[0].outputDir, L"kept");
    EXPECT_EQ(statuses[0].status, unknown);
}

TEST_F(JobStatusQueryTest, SameIdTwiceGivesTwoEqualRecords) {
    EXPECT_EQ(Ask({L"saved3", L"saved3"}), std::vector(2, Job(3).GetJobStatusInfo()));
}

TEST_F(JobStatusQueryTest, RecordsStandInTheOrderOfTheRequest) {
    EXPECT_EQ(Ask({L"5", L"saved3"}), (std::vector{StatusNamed(5, L"5"), StatusNamed(3, L"saved3")}));
}

TEST_F(JobStatusQueryTest, ElementsBeyondTheRequestAreDropped) {
    std::vector<JobStatusInfo> statuses(4);
    engine->CheckJobStatus({L"saved3"}, statuses);
    EXPECT_EQ(statuses.size(), 1U);
    engine->CheckJobStatus({}, statuses);
    EXPECT_TRUE(statuses.empty());
}

TEST_F(JobStatusQueryTest, JobAskedForByIdAndNumberAnswersToTheIdAlone) {
    const std::vector<JobStatusInfo> statuses = Ask({L"saved3", L"3"});
    EXPECT_EQ(statuses[0].status, JobStatus::Success);
    EXPECT_EQ(statuses[1].status, unknown);
}

TEST_F(JobStatusQueryTest, FirstJobInListOrderAnswersToAName) {
    JobListInfo impostor = SavedJob(9, JobStatus::Canceled);
    impostor.id = L"3";
    Start({SavedJob(3, JobStatus::Success), impostor});
    EXPECT_EQ(Ask({L"3"})[0].status, JobStatus::Success);
    Start({impostor, SavedJob(3, JobStatus::Success)});
    EXPECT_EQ(Ask({L"3"})[0].status, JobStatus::Canceled);
}

TEST_F(JobStatusQueryTest, NumbersAreComparedAsText) {
    EXPECT_EQ(Ask({L"03"})[0].status, unknown);
    EXPECT_EQ(Ask({L" 3"})[0].status, unknown);
}

TEST_F(JobStatusQueryTest, EveryStepLeavesItsDebugLine) {
    Ask({L"5", L"saved3", L"nobody"});
    EXPECT_EQ(companion.Events(), (Lines{L"debug: saved3", L"debug: saved3", L"debug: saved5", L"debug: 5", L"debug: 5",
                                         L"debug: 5", L"debug: saved3", L"debug: nobody"}));
}

TEST_F(JobStatusQueryTest, QueryWritesNoFile) {
    Ask({L"saved3"});
    EXPECT_EQ(JobListWriteCount(), 0U);
}

} // namespace

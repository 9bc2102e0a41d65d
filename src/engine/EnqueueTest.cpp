#include "kit/engine/EngineFixture.h"

#include "platform/files/FileSystem.h"

namespace {

/// The handling of the input sets of a request.
class EnqueueTest : public EngineFixture {
protected:
    EnqueueTest() {
        Start();
        companion.Forget();
    }
};

TEST_F(EnqueueTest, EachInputSetBecomesAQueuedJob) {
    const std::wstring a = Input(L"a.stl");
    const std::wstring b = Input(L"b.stl");
    const JobEnqueueResult result = Enqueue({{a}, {b, a}});
    ASSERT_EQ(result.jobIds.size(), 2U);
    const JobListInfo& second = Job(2).GetJobListInfo();
    EXPECT_EQ(second.id, result.jobIds[1].id);
    EXPECT_EQ(second.status, JobStatus::Queued);
    EXPECT_EQ(second.progress, 0);
    EXPECT_EQ(second.inputFiles, (std::vector{b, a}));
    EXPECT_EQ(second.workDir, directory / (L"work\\" + second.id));
    EXPECT_EQ(second.outputDir, directory / L"out");
    EXPECT_EQ(second.startTime + second.endTime, L"");
}

TEST_F(EnqueueTest, AddedJobsAreLoggedBeforeTheFileIsWrittenOnce) {
    Enqueue({{Input(L"a.stl")}, {Input(L"b.stl")}});
    EXPECT_EQ(companion.Events(),
              (Lines{L"info: Job: 1 is added", L"info: Job: 2 is added", L"write: " + companion.jobListFile}));
}

TEST_F(EnqueueTest, MissingInputIsLoggedAndItsSetShowsUpAsJobZero) {
    const std::wstring missing = directory / L"missing.stl";
    Enqueue({{missing}, {Input(L"b.stl")}});
    EXPECT_EQ(companion.Events(), (Lines{L"error: Input: " + missing + L" is not found", L"info: Job: 0 is added",
                                         L"info: Job: 1 is added", L"write: " + companion.jobListFile}));
}

TEST_F(EnqueueTest, SecondOfThreeSetsRejectedLeavesItsResultEmpty) {
    const std::wstring a = Input(L"a.stl");
    const JobEnqueueResult result = Enqueue({{a}, {a, directory / L"missing.stl"}, {a}});
    ASSERT_EQ(result.jobIds.size(), 3U);
    EXPECT_EQ(result.jobIds[1], JobIdInfo());
    EXPECT_EQ(result.jobIds[0].seqId, 1);
    EXPECT_EQ(result.jobIds[2].seqId, 2);
    EXPECT_EQ(result.inputSetResults, std::vector<std::vector<std::wstring>>(3));
    EXPECT_EQ(result.requestId, L"request");
}

TEST_F(EnqueueTest, OnlyTheFirstMissingInputOfASetIsLogged) {
    Enqueue({{directory / L"one.stl", directory / L"two.stl"}});
    EXPECT_EQ(companion.Events(L"error: "), Lines{L"Input: " + directory.Path() + L"\\one.stl is not found"});
}

TEST_F(EnqueueTest, EmptyInputSetIsSkippedSilently) {
    const JobEnqueueResult result = Enqueue({{}, {Input(L"a.stl")}});
    EXPECT_EQ(result.jobIds[0], JobIdInfo());
    EXPECT_EQ(companion.Events(L"error: "), Lines());
    EXPECT_EQ(companion.Events(L"info: "), (Lines{L"Job: 0 is added", L"Job: 1 is added"}));
}

TEST_F(EnqueueTest, RequestWithoutInputSetsSucceedsAndWritesTheFile) {
    const JobEnqueueResult result = Enqueue({});
    EXPECT_TRUE(result.jobIds.empty());
    EXPECT_TRUE(engine->jobList.empty());
    EXPECT_EQ(companion.Events(), Lines{L"write: " + companion.jobListFile});
}

TEST_F(EnqueueTest, RequestOfWhichEverySetIsRejectedSucceeds) {
    Enqueue({{directory / L"missing.stl"}, {}});
    EXPECT_TRUE(engine->jobList.empty());
    EXPECT_EQ(JobListWriteCount(), 1U);
}

TEST_F(EnqueueTest, DirectoryCountsAsAnExistingInput) {
    Enqueue({{directory.Path()}});
    EXPECT_EQ(engine->jobList.size(), 1U);
}

TEST_F(EnqueueTest, NumbersGoOnFromTheNextOne) {
    engine->nextSeqId = 5;
    const std::wstring a = Input(L"a.stl");
    const JobEnqueueResult result = Enqueue({{a}, {a}, {a}});
    EXPECT_EQ(result.jobIds[0].seqId, 5);
    EXPECT_EQ(result.jobIds[1].seqId, 6);
    EXPECT_EQ(result.jobIds[2].seqId, 7);
    EXPECT_EQ(engine->nextSeqId, 8);
}

TEST_F(EnqueueTest, RejectedSetsTakeNoNumber) {
    Enqueue({{directory / L"missing.stl"}});
    EXPECT_EQ(engine->nextSeqId, 1);
}

TEST_F(EnqueueTest, IdsAreDifferentLowerCaseHexadecimalTextsAndKnown) {
    EnqueueJobs(100);
    EXPECT_EQ(engine->knownJobIds.size(), 100U);
    for (const auto& job : engine->jobList) {
        EXPECT_TRUE(engine->knownJobIds.contains(job->GetId()));
        EXPECT_EQ(job->GetId().find_first_not_of(L"0123456789abcdef"), std::wstring::npos) << job->GetId();
        EXPECT_LE(job->GetId().size(), 8U);
    }
}

TEST_F(EnqueueTest, ArgumentsOfTheRequestGoIntoEveryJob) {
    EnqueueJobsInfo request = Request({{Input(L"a.stl")}});
    request.runArgument = L"--fine";
    request.extraText = L"note";
    JobEnqueueResult result;
    EXPECT_TRUE(engine->EnqueueJob(request, result));
    EXPECT_EQ(Job(1).GetJobListInfo().runArgument, L"--fine");
    EXPECT_EQ(Job(1).GetJobListInfo().extraText, L"note");
}

TEST_F(EnqueueTest, TimeStampDirectoryIsPutBelowTheOutputDirectory) {
    EnqueueJobsInfo request = Request({{Input(L"a.stl")}});
    request.useTimeStampFolder = true;
    JobEnqueueResult result;
    EXPECT_TRUE(engine->EnqueueJob(request, result));
    const std::wstring parent = directory / L"out\\";
    const std::wstring outputDir = Job(1).GetJobListInfo().outputDir;
    ASSERT_TRUE(outputDir.starts_with(parent));
    const std::wstring stamp = outputDir.substr(parent.size());
    ASSERT_EQ(stamp.size(), 15U);
    EXPECT_EQ(stamp.find_first_not_of(L"0123456789"), 8U);
    EXPECT_EQ(stamp[8], L'_');
    EXPECT_TRUE(stamp.starts_with(L"20"));
}

TEST_F(EnqueueTest, WorkDirectoryIsAskedForAtEveryRequestAndNotMade) {
    Enqueue({{Input(L"a.stl")}});
    companion.workDirectory = directory / L"elsewhere";
    Enqueue({{Input(L"a.stl")}});
    EXPECT_TRUE(Job(1).GetWorkDir().starts_with(directory / L"work\\"));
    EXPECT_TRUE(Job(2).GetWorkDir().starts_with(directory / L"elsewhere\\"));
    EXPECT_FALSE(platform::Exists(directory / L"elsewhere"));
}

TEST_F(EnqueueTest, CursorMovesToTheFirstNewJobWhenItWasAtTheEnd) {
    EnqueueJobs(2);
    EXPECT_EQ(NumberAtCursor(), 1);
    EnqueueJobs(1);
    EXPECT_EQ(NumberAtCursor(), 1);
}

TEST_F(EnqueueTest, FileHoldsAllJobsInEnqueueOrder) {
    Enqueue({{Input(L"a.stl")}});
    Enqueue({{Input(L"a.stl")}});
    const auto writes = companion.JobListWrites();
    ASSERT_EQ(writes.size(), 2U);
    EXPECT_EQ(writes[1], (std::vector{Job(1).GetJobListInfo(), Job(2).GetJobListInfo()}));
}

TEST_F(EnqueueTest, ResultOfAnEarlierRequestIsResized) {
    EnqueueJobsInfo request = Request({{}});
    JobEnqueueResult result;
    result.requestId = L"earlier";
    result.jobIds.resize(3);
    result.inputSetResults.resize(3);
    EXPECT_TRUE(engine->EnqueueJob(request, result));
    EXPECT_EQ(result.requestId, L"request");
    EXPECT_EQ(result.jobIds.size(), 1U);
    EXPECT_EQ(result.inputSetResults.size(), 1U);
}

} // namespace

#include "kit/controller_host/AnswersFixture.h"

#include "platform/files/NativePath.h"

namespace {

using Texts = std::vector<std::wstring>;
using Sets = std::vector<Texts>;

/// Each refused input set is returned with its reason.
class EnqueueReasonsTest : public AnswersFixture {
protected:
    std::wstring Native(const std::wstring& name) const { return platform::ToNativeText(directory / name); }

    const std::wstring scenario = directory / L"scenarios\\mesh.rb";
    const std::wstring part = directory / L"part.stl";
};

TEST_F(EnqueueReasonsTest, AnAcceptedSetHasNone) {
    const JobEnqueueResult result = Enqueued(RequestFor(scenario, {part}));
    EXPECT_EQ(result.jobIds.at(0).seqId, 1);
    EXPECT_EQ(result.inputSetResults, Sets(1));
}

TEST_F(EnqueueReasonsTest, AMissingInputIsNamedAndTheOthersGetJobs) {
    const JobEnqueueResult result = Enqueued(RequestFor(scenario, {directory / L"missing.stl", part}));
    EXPECT_EQ(result.jobIds.at(0), JobIdInfo());
    EXPECT_EQ(result.jobIds.at(1).seqId, 1);
    EXPECT_EQ(result.inputSetResults, (Sets{{L"The input file " + Native(L"missing.stl") + L" does not exist."}, {}}));
}

TEST_F(EnqueueReasonsTest, AnEmptySetIsSaidSo) {
    EnqueueJobsInfo request = RequestFor(scenario, {part});
    request.inputFileSets.insert(request.inputFileSets.begin(), Texts());
    EXPECT_EQ(Enqueued(request).inputSetResults, (Sets{{L"The input set names no file."}, {}}));
}

TEST_F(EnqueueReasonsTest, AnUnknownScenarioIsCalledSoForEverySet) {
    const JobEnqueueResult result = Enqueued(RequestFor(L"nothing.rb", {part, part}));
    const std::wstring reason = L"There is no scenario nothing.rb: it is neither an id of a scenario nor a file of the "
                                L"scenario directories.";
    EXPECT_EQ(result.requestId, L"r");
    EXPECT_EQ(result.jobIds, std::vector<JobIdInfo>(2));
    EXPECT_EQ(result.inputSetResults, (Sets{{reason}, {reason}}));
}

TEST_F(EnqueueReasonsTest, AScenarioFileThatIsMissingOrADirectoryIsCalledSo) {
    EXPECT_EQ(Enqueued(RequestFor(directory / L"gone.rb", {part})).inputSetResults,
              (Sets{{L"The scenario file " + Native(L"gone.rb") + L" does not exist."}}));
    EXPECT_EQ(Enqueued(RequestFor(directory / L"scenarios", {part})).inputSetResults,
              (Sets{{L"The scenario " + Native(L"scenarios") + L" is a folder, not a file."}}));
    EXPECT_TRUE(Jobs().empty());
}

TEST_F(EnqueueReasonsTest, ARequestWithoutOutputDirectoryIsRefused) {
    EnqueueJobsInfo request = RequestFor(scenario, {part});
    request.outputDir.clear();
    const JobEnqueueResult result = Enqueued(request);
    EXPECT_EQ(result.jobIds, std::vector<JobIdInfo>(1));
    EXPECT_EQ(result.inputSetResults, (Sets{{L"The request names no output directory."}}));
}

TEST_F(EnqueueReasonsTest, ARequestWithoutInputSetsHasItsReasonInASetOfItsOwn) {
    const JobEnqueueResult result = Enqueued(RequestFor(scenario, {}));
    EXPECT_TRUE(result.jobIds.empty());
    EXPECT_EQ(result.inputSetResults, (Sets{{L"The request names no input files."}}));
}

TEST_F(EnqueueReasonsTest, AnInputWhoseNameGivesNoDirectoryOfItsOwnIsRefused) {
    for (const wchar_t* const name : {L".hidden", L"...stl", L"..stl.3"}) {
        WriteTextFile(directory / name, "solid");
        const JobEnqueueResult result = Enqueued(RequestFor(scenario, {directory / name, part}));
        EXPECT_EQ(result.jobIds.at(0), JobIdInfo());
        EXPECT_FALSE(result.jobIds.at(1).id.empty());
        EXPECT_EQ(result.inputSetResults.at(0),
                  Texts{L"The input " + Native(name) +
                        L" cannot be the first of a job: the job's output folder bears its name without extension, of "
                        L"which nothing is left. Rename it, or put another file before it."});
    }
    EXPECT_EQ(Jobs().size(), 3U);
}

TEST_F(EnqueueReasonsTest, ARootOrAPathWithASeparatorAtItsEndGivesNoDirectoryEither) {
    for (const std::wstring& input : {std::wstring(L"\\"), directory.Path() + L"\\"}) {
        EXPECT_EQ(Enqueued(RequestFor(scenario, {input})).inputSetResults.at(0).size(), 1U) << input.size();
    }
    EXPECT_TRUE(Jobs().empty());
}

TEST_F(EnqueueReasonsTest, SuchAnInputMayStandBehindAnother) {
    WriteTextFile(directory / L".hidden", "solid");
    EnqueueJobsInfo request = RequestFor(scenario, {part});
    request.inputFileSets[0].push_back(directory / L".hidden");
    EXPECT_EQ(Enqueued(request).jobIds.at(0).seqId, 1);
    EXPECT_EQ(Jobs().at(0).inputFiles.size(), 2U);
}

} // namespace

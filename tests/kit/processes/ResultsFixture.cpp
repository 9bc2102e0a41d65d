#include "kit/processes/ResultsFixture.h"

#include <utility>

#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

ResultsFixture::ResultsFixture() {
    WriteTextFile(directory / L"in\\a.stl", "first input");
    WriteTextFile(directory / L"in\\b.stl", "second input");
    job.inputFiles = {directory / L"in\\a.stl", directory / L"in\\b.stl"};
    job.runArgument = L"fine";
    UseNewDirectories(L"first");
}

void ResultsFixture::UseNewDirectories(const std::wstring& name) {
    job.workDir = directory / (L"work\\" + name);
    job.outputFolder = directory / (L"out\\" + name);
    EXPECT_TRUE(platform::EnsureDirectory(job.outputFolder));
}

void ResultsFixture::NameCandidates(std::vector<provenance::Candidate> candidates) {
    job.jobId = L"b0b";
    WriteTextFile(InWorkDir(provenance::contextFileName),
                  text::ToUtf8(provenance::Serialize(provenance::RunContext{1, std::move(candidates)})));
}

std::wstring ResultsFixture::Output(const std::wstring& name) const {
    return platform::ResolveAgainst(job.outputFolder, name);
}

std::wstring ResultsFixture::RecordFile() const {
    return Output(provenance::fileName);
}

provenance::Record ResultsFixture::ReadRecord() const {
    provenance::Record record;
    std::wstring problem;
    EXPECT_TRUE(provenance::ReadRecord(RecordFile(), record, problem)) << text::ToUtf8(problem);
    return record;
}

#include "formats/Provenance.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "text/Text.h"

namespace {

class ProvenanceTest : public testing::Test {
protected:
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"file.json";
    std::wstring problem;
};

provenance::Record SampleRecord() {
    provenance::Record record;
    record.controllerVersion = L"1.0";
    record.scenario = {{L"/s/a.rb", 3, L"ab"}};
    record.interpreter = {L"/usr/bin/ruby", 14, 1700000000, {L"--disable=gems"}};
    record.runArgument = L"fine";
    record.inputs = {{L"/in/\"b\".stl", 4, L"cd"}, {L"/in/c", 0, L""}};
    record.toolVersions = {{L"mesher", L"2"}};
    record.jobId = L"3f9a0c1";
    record.attempt = 2;
    record.machine = L"m";
    record.user = L"u";
    record.startTime = L"2026-03-05T07:08:09Z";
    record.endTime = L"2026-03-05T07:08:10Z";
    record.succeeded = true;
    record.tools = {{L"mesher", L"2.1"}};
    record.usedFiles = {{L"/s/lib.rb", 5, L"ef"}};
    record.outputs = {{L"views/front.png", 6, L"01"}};
    record.outputDirectories = {L"views"};
    record.resultFiles = {L"views/front.png"};
    record.resultsOf = provenance::JobName{L"a", 12};
    record.notReusable = L"why";
    return record;
}

TEST_F(ProvenanceTest, ARecordComesBackAsItWasWritten) {
    WriteTextFile(path, text::ToUtf8(provenance::Serialize(SampleRecord())));
    provenance::Record read;
    ASSERT_TRUE(provenance::ReadRecord(path, read, problem)) << text::ToUtf8(problem);
    EXPECT_EQ(read, SampleRecord());
}

TEST_F(ProvenanceTest, AContextComesBackAsItWasWritten) {
    const provenance::RunContext context{3, {{{L"3f9a0c1", 12}, L"/results/a"}}};
    WriteTextFile(path, text::ToUtf8(provenance::Serialize(context)));
    provenance::RunContext read;
    ASSERT_TRUE(provenance::ReadContext(path, read, problem)) << text::ToUtf8(problem);
    EXPECT_EQ(read, context);
}

TEST_F(ProvenanceTest, UnusableFilesAreRefusedWithTheReason) {
    provenance::Record record;
    provenance::UsedTools used;
    EXPECT_FALSE(provenance::ReadRecord(path, record, problem));
    WriteTextFile(path, R"({"version":2})");
    EXPECT_FALSE(provenance::ReadRecord(path, record, problem));
    EXPECT_NE(problem.find(L"file.json"), std::wstring::npos);
    std::string files = "\"/a\"";
    for (std::size_t count = 1; count <= provenance::mostTools; ++count) {
        files += ",\"/a\"";
    }
    WriteTextFile(path, "{\"files\":[" + files + "]}");
    EXPECT_FALSE(provenance::ReadUsedTools(path, used, problem));
    EXPECT_NE(problem.find(L"names more than 1000 tools or files"), std::wstring::npos);
    EXPECT_EQ(used, provenance::UsedTools());
}

} // namespace

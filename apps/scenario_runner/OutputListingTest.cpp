#include "scenario_runner/OutputListing.h"

#include <gmock/gmock.h>

#include "formats/Provenance.h"
#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"

namespace {

using scenario_runner::ListOutputs;
using scenario_runner::OutputListing;
using testing::UnorderedElementsAre;

class OutputListingTest : public testing::Test {
protected:
    std::wstring List() { return ListOutputs(directory.Path(), outputs); }

    const TemporaryDirectory directory;
    OutputListing outputs;
};

TEST_F(OutputListingTest, FilesAndDirectoriesAreListedWithoutTheRecord) {
    WriteTextFile(directory / L"a", "");
    WriteTextFile(directory / L"b\\c\\provenance.json", "");
    WriteTextFile(directory / L"provenance.json", "");
    EXPECT_EQ(List(), L"");
    EXPECT_THAT(outputs.files, UnorderedElementsAre(L"a", L"b/c/provenance.json"));
    EXPECT_THAT(outputs.directories, UnorderedElementsAre(L"b", L"b/c"));
}

TEST_F(OutputListingTest, TooDeepDirectoriesAreNotListed) {
    std::wstring path;
    for (int depth = 0; depth <= provenance::deepestOutput; ++depth) {
        path += L"d\\";
    }
    ASSERT_TRUE(platform::EnsureDirectory(directory / path));
    EXPECT_EQ(List(), L"The outputs are nested too deeply.");
}

TEST_F(OutputListingTest, NamesThatPathsCannotExpressAreReported) {
    if (!MakeFileOfBytes(directory.Path(), "a\\b")) {
        GTEST_SKIP() << "no such names here";
    }
    EXPECT_NE(List().find(L"backslash"), std::wstring::npos);
}

TEST_F(OutputListingTest, ADirectoryThatIsALinkIsNotFollowed) {
    const TemporaryDirectory other;
    if (!MakeLink(other.Path(), directory / L"link")) {
        GTEST_SKIP() << "no links here";
    }
    EXPECT_EQ(List(), L"The output link is a link.");
    EXPECT_NE(ListOutputs(directory / L"link", outputs).find(L"is a link"), std::wstring::npos);
}

TEST_F(OutputListingTest, AMissingDirectoryIsNamed) {
    EXPECT_NE(ListOutputs(directory / L"missing", outputs).find(L"cannot be listed"), std::wstring::npos);
}

} // namespace

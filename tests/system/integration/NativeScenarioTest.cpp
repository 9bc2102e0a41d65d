#include "kit/TestProcess.h"
#include "kit/processes/ScenarioRunFixture.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <gmock/gmock.h>

/// The example scenario in C++, run from its package.
namespace {

using testing::HasSubstr;

class NativeScenarioTest : public ScenarioRunFixture {
protected:
    NativeScenarioTest() {
        job.scenarioPath = platform::ResolveAgainst(platform::ProgramDirectory(), L"stl_report.esa");
    }

    void RunOn(const std::vector<std::wstring>& inputs) {
        job.inputFiles = inputs;
        ASSERT_EQ(Start(), 0);
        AwaitEnd();
    }
    /// A copy of an example's input.
    std::wstring Example(const std::wstring& name) const {
        WriteTextFile(directory / name, ReadTextFile(platform::ResolveAgainst(EXAMPLE_INPUTS, name)));
        return directory / name;
    }
    std::string Output(const std::wstring& name) const {
        return ReadTextFile(platform::ResolveAgainst(job.outputFolder, name));
    }
    std::string FirstText() const { return text::ToUtf8(FirstMessage()); }
};

/// A tetrahedron of volume 1/6; an open one lacks its last triangle.
std::string Tetrahedron(bool isOpen) {
    const char* const facets[] = {"0 0 0 vertex 0 1 0 vertex 1 0 0", "0 0 0 vertex 1 0 0 vertex 0 0 1",
                                  "0 0 0 vertex 0 0 1 vertex 0 1 0", "1 0 0 vertex 0 1 0 vertex 0 0 1"};
    std::string stl = "solid tetrahedron\n";
    for (std::size_t i = 0; i < (isOpen ? 3U : 4U); ++i) {
        stl += std::string("facet normal 0 0 0 outer loop vertex ") + facets[i] + " endloop endfacet\n";
    }
    return stl + "endsolid\n";
}

TEST_F(NativeScenarioTest, APartIsMeasuredAndDrawn) {
    RunOn({Example(L"bracket.stl")});
    EXPECT_TRUE(Result().succeeded) << FirstText() << Log();
    EXPECT_EQ(FirstText(), "bracket.stl: 352 triangles, 80 x 60 x 72");
    EXPECT_THAT(Output(L"bracket_report.json"), HasSubstr("\"openEdges\": 0"));
    EXPECT_EQ(Output(L"bracket_picture.png").substr(1, 3), "PNG");
}

TEST_F(NativeScenarioTest, VolumeAndSurfaceAreThoseOfTheSolid) {
    WriteTextFile(directory / L"t.stl", Tetrahedron(false));
    RunOn({directory / L"t.stl"});
    EXPECT_THAT(Output(L"t_report.json"), HasSubstr("\"volume\": 0.1666666"));
    EXPECT_THAT(Output(L"t_report.json"), HasSubstr("\"surface\": 2.366025"));
}

TEST_F(NativeScenarioTest, AnOpenMeshIsAWarning) {
    WriteTextFile(directory / L"open.stl", Tetrahedron(true));
    RunOn({directory / L"open.stl"});
    ASSERT_EQ(Result().messages.size(), 2U) << FirstText();
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(Result().messages[1].first, 1);
    EXPECT_THAT(text::ToUtf8(Result().messages[1].second), HasSubstr("3 open edges"));
}

TEST_F(NativeScenarioTest, AnInputThatIsNoStlFileFailsWithItsName) {
    RunOn({Example(L"not_an_stl.stl")});
    EXPECT_FALSE(Result().succeeded);
    EXPECT_THAT(FirstText(), HasSubstr("not_an_stl.stl is cut off or no STL file"));
}

TEST_F(NativeScenarioTest, AMeshThatEndsInATriangleFails) {
    WriteTextFile(directory / L"cut.stl", Tetrahedron(false).substr(0, 60));
    RunOn({directory / L"cut.stl"});
    EXPECT_FALSE(Result().succeeded);
    EXPECT_THAT(FirstText(), HasSubstr("cut.stl"));
}

TEST_F(NativeScenarioTest, NamesOutsideAsciiAreKept) {
    WriteTextFile(directory / L"Flansch \u00fc\u4e2d.stl", Tetrahedron(false));
    RunOn({directory / L"Flansch \u00fc\u4e2d.stl"});
    EXPECT_TRUE(Result().succeeded) << FirstText();
    EXPECT_TRUE(platform::Exists(platform::ResolveAgainst(job.outputFolder, L"Flansch \u00fc\u4e2d_picture.png")));
}

TEST_F(NativeScenarioTest, SeveralInputsGetReportsOfTheirOwn) {
    WriteTextFile(directory / L"a\\t.stl", Tetrahedron(false));
    WriteTextFile(directory / L"b\\t.stl", Tetrahedron(true));
    RunOn({directory / L"a\\t.stl", directory / L"b\\t.stl"});
    EXPECT_THAT(Output(L"1_t_report.json"), HasSubstr("\"triangles\": 4"));
    EXPECT_THAT(Output(L"2_t_report.json"), HasSubstr("\"triangles\": 3"));
    EXPECT_EQ(Result().outputFiles.size(), 4U);
}

TEST_F(NativeScenarioTest, WithoutInputsItSaysWhatIsMissing) {
    RunOn({});
    EXPECT_FALSE(Result().succeeded);
    EXPECT_THAT(FirstText(), HasSubstr("No input file was given"));
}

} // namespace

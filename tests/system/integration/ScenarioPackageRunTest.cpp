#include "kit/TestProcess.h"
#include "kit/ZipWriter.h"
#include "kit/processes/ScenarioRunFixture.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

using test_support::ZipEntry;

class ScenarioPackageRunTest : public ScenarioRunFixture {
protected:
    long StartPackage(const std::string& manifest, std::vector<ZipEntry> entries) {
        ZipEntry description;
        description.name = "manifest.json";
        description.content = manifest;
        entries.push_back(description);
        UseScenario(L"packaged scenario.esa", test_support::MakeZip(entries));
        return Start();
    }

    static ZipEntry Entry(const std::string& name, const std::string& content) {
        ZipEntry entry;
        entry.name = name;
        entry.content = content;
        entry.deflated = false;
        return entry;
    }
};

} // namespace

TEST_F(ScenarioPackageRunTest, APackagedProgramRuns) {
    const std::string program = ReadTextFile(test_support::ProgramPath(L"test_scenario"));
    ASSERT_EQ(
        StartPackage(R"({"version":1,"displayName":"Packaged","executable":"bin/packaged.exe","successExitCodes":[4]})",
                     {Entry("bin/packaged.exe", program), Entry("bin/steps.txt", "print from a package\nexit 4")}),
        0);
    EXPECT_EQ(AwaitEnd(), 0) << text::ToUtf8(FirstMessage());
    EXPECT_TRUE(Result().succeeded) << Log();
    EXPECT_EQ(Log(), "from a package\n");
    EXPECT_TRUE(platform::Exists(InWorkDir(L"package\\bin\\steps.txt")));
}

TEST_F(ScenarioPackageRunTest, OfTheProgramsForTwoSystemsThatOfThisSystemRuns) {
    const std::string own = "bin/packaged" + text::ToUtf8(platform::programExtension);
    const std::string other = own == "bin/packaged" ? "bin/packaged.exe" : "bin/packaged";
    const std::string program = ReadTextFile(test_support::ProgramPath(L"test_scenario"));
    ASSERT_EQ(StartPackage(R"({"version":1,"displayName":"Packaged","executable":"bin/packaged"})",
                           {Entry(other, "a program of another system"), Entry(own, program),
                            Entry("bin/steps.txt", "print from a package")}),
              0);
    EXPECT_EQ(AwaitEnd(), 0) << text::ToUtf8(FirstMessage());
    EXPECT_TRUE(Result().succeeded) << Log();
    EXPECT_EQ(Log(), "from a package\n");
}

TEST_F(ScenarioPackageRunTest, APackagedScriptRunsWithItsInterpreter) {
    ASSERT_EQ(StartPackage(
                  R"({"version":1,"displayName":"Packaged","entryPoint":"main.steps","interpreter":"test_scenario"})",
                  {Entry("main.steps", "print from a package")}),
              0);
    EXPECT_EQ(AwaitEnd(), 0) << text::ToUtf8(FirstMessage());
    EXPECT_TRUE(Result().succeeded);
    EXPECT_EQ(Log(), "from a package\n");
}

TEST_F(ScenarioPackageRunTest, APackageIsUnpackedAnewForEachRun) {
    for (const char* const text : {"print first", "print second"}) {
        ASSERT_EQ(
            StartPackage(
                R"({"version":1,"displayName":"Packaged","entryPoint":"main.steps","interpreter":"test_scenario"})",
                {Entry("main.steps", text)}),
            0);
        EXPECT_EQ(AwaitEnd(), 0) << text::ToUtf8(FirstMessage());
    }
    EXPECT_EQ(Log(), "second\n");
}

TEST_F(ScenarioPackageRunTest, ABrokenPackageFailsTheJob) {
    UseScenario(L"broken.esa", "no package");
    ASSERT_EQ(Start(), 0);
    EXPECT_NE(AwaitEnd(), 0);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_NE(FirstMessage().find(L"broken.esa"), std::wstring::npos);
}

TEST_F(ScenarioPackageRunTest, AProgramThatThePackageLacksFailsTheJob) {
    ASSERT_EQ(StartPackage(R"({"version":1,"displayName":"Packaged","executable":"bin/missing.exe"})", {}), 0);
    EXPECT_NE(AwaitEnd(), 0);
    EXPECT_FALSE(Result().succeeded);
    EXPECT_NE(FirstMessage().find(L"bin/missing.exe"), std::wstring::npos);
}

#include "formats/ScenarioManifest.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "kit/ZipWriter.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

const bool isWindows = !std::wstring(platform::programExtension).empty();

class ScenarioManifestTest : public testing::Test {
protected:
    /// Reads the manifest of a package with a program "bin/check", which has these files.
    bool Read(const std::vector<std::string>& files) {
        std::vector<test_support::ZipEntry> entries{
            {.name = "manifest.json", .content = R"({"displayName":"d","executable":"bin/check"})"}};
        for (const std::string& file : files) {
            entries.push_back({.name = file, .content = "program"});
        }
        WriteTextFile(directory / L"check.esa", test_support::MakeZip(entries));
        return scenario_manifest::ReadFor(directory / L"check.esa", manifest, problem);
    }

    scenario_manifest::ScenarioManifest manifest;
    std::wstring problem;
    const TemporaryDirectory directory;
};

TEST_F(ScenarioManifestTest, OfTwoProgramsThatOfThisSystemIsChosen) {
    ASSERT_TRUE(Read({"bin/check", "bin/check.exe"})) << text::ToUtf8(problem);
    EXPECT_EQ(manifest.executable, isWindows ? L"bin/check.exe" : L"bin/check");
}

TEST_F(ScenarioManifestTest, AProgramOfTheWholeNameSuitsBothSystems) {
    ASSERT_TRUE(Read({"bin/check"})) << text::ToUtf8(problem);
    EXPECT_EQ(manifest.executable, L"bin/check");
}

TEST_F(ScenarioManifestTest, WithoutAProgramForThisSystemThePackageIsRefused) {
    if (isWindows) {
        ASSERT_TRUE(Read({"bin/check.exe"})) << text::ToUtf8(problem);
        EXPECT_EQ(manifest.executable, L"bin/check.exe");
    }
    EXPECT_FALSE(Read({isWindows ? "bin/check.exe.old" : "bin/check.exe"}));
    EXPECT_NE(
        problem.find(L"check.esa: manifest.json, the package has no file \"bin/check\", the program for this system"),
        std::wstring::npos)
        << text::ToUtf8(problem);
}

} // namespace

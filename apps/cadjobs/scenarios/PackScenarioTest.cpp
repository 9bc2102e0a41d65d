#include "cadjobs/Cadjobs.h"

#include "formats/ScenarioPackage.h"
#include "kit/front_end/CommandContextFixture.h"
#include "platform/files/FileSystem.h"

namespace {

constexpr const char* manifest = R"({"version":1,"displayName":"Wall","entryPoint":"main.rb","interpreter":"ruby"})";

class PackScenarioTest : public CommandContextFixture {
protected:
    PackScenarioTest() {
        WriteTextFile(directory / L"wall\\manifest.json", manifest);
        WriteTextFile(directory / L"wall\\main.rb", "puts 1\n");
    }

    int Pack() {
        return static_cast<int>(
            front_end::RunCadjobs(context, {L"pack", directory / L"wall", L"--output", directory / L"out"}));
    }

    bool Has(const std::string& name) const {
        scenario_package::Package opened;
        std::wstring problem;
        return opened.Open(package, problem) && opened.HasFile(name);
    }

    const std::wstring package = directory / L"out\\wall.esa";
};

TEST_F(PackScenarioTest, AllFilesGoInButHiddenOnesCachesAndPackages) {
    WriteTextFile(directory / L"wall\\lib\\mesh.rb", "");
    WriteTextFile(directory / L"wall\\.git\\config", "");
    WriteTextFile(directory / L"wall\\__pycache__\\main.pyc", "");
    WriteTextFile(directory / L"wall\\wall.esa", "");
    EXPECT_EQ(Pack(), 0) << console.errors;
    EXPECT_NE(console.output.find("wall.esa: 3 files\n"), std::string::npos) << console.output;
    EXPECT_TRUE(Has("manifest.json") && Has("main.rb") && Has("lib/mesh.rb"));
    EXPECT_FALSE(Has(".git/config") || Has("__pycache__/main.pyc") || Has("wall.esa"));
}

TEST_F(PackScenarioTest, AListNamesTheFilesAndTheirPlaces) {
    WriteTextFile(directory / L"common\\mesh.rb", "");
    WriteTextFile(directory / L"wall\\notes.txt", "");
    WriteTextFile(directory / L"wall\\package_files.txt",
                  "# name  file\n\nmanifest.json  manifest.json\r\nmain.rb main.rb\nlib/mesh.rb   ../common/mesh.rb\n");
    EXPECT_EQ(Pack(), 0) << console.errors;
    EXPECT_TRUE(Has("manifest.json") && Has("main.rb") && Has("lib/mesh.rb"));
    EXPECT_FALSE(Has("notes.txt") || Has("package_files.txt"));
    WriteTextFile(directory / L"wall\\package_files.txt", "manifest.json\n");
    EXPECT_EQ(Pack(), 2);
    EXPECT_NE(console.errors.find("package_files.txt has the line \"manifest.json\""), std::string::npos);
}

TEST_F(PackScenarioTest, APackageHasAProgramForEachSystem) {
    WriteTextFile(directory / L"wall\\manifest.json", R"({"version":1,"displayName":"Wall","executable":"bin/wall"})");
    WriteTextFile(directory / L"wall\\bin\\wall", "for Linux");
    WriteTextFile(directory / L"wall\\bin\\wall.exe", "for Windows");
    EXPECT_EQ(Pack(), 0) << console.errors;
    EXPECT_TRUE(Has("bin/wall") && Has("bin/wall.exe"));
}

TEST_F(PackScenarioTest, WhatCouldNotRunLeavesTheEarlierPackageAlone) {
    WriteTextFile(package, "the one before");
    WriteTextFile(directory / L"wall\\manifest.json", R"({"version":1,"displayName":"Wall"})");
    EXPECT_EQ(Pack(), 1);
    EXPECT_NE(console.errors.find("makes no package: "), std::string::npos) << console.errors;
    EXPECT_TRUE(platform::RemoveFile(directory / L"wall\\manifest.json"));
    EXPECT_EQ(Pack(), 1);
    EXPECT_EQ(ReadTextFile(package), "the one before");
}

TEST_F(PackScenarioTest, TheSamePackageTwiceHasTheSameBytes) {
    EXPECT_EQ(Pack(), 0);
    const std::string first = ReadTextFile(package);
    EXPECT_EQ(Pack(), 0);
    EXPECT_EQ(ReadTextFile(package), first);
}

TEST_F(PackScenarioTest, WithoutADirectoryNothingIsMade) {
    EXPECT_EQ(static_cast<int>(
                  front_end::RunCadjobs(context, {L"pack", directory / L"none", L"--output", directory / L"out"})),
              2);
    EXPECT_FALSE(platform::Exists(directory / L"out"));
}

} // namespace

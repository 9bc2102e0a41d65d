#include "formats/ScenarioPackage.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using scenario_package::PackedFile;

class ScenarioPackagePackTest : public testing::Test {
protected:
    PackedFile File(const std::string& name, const std::string& content) {
        const std::wstring path = directory / (L"file" + std::to_wstring(++count));
        WriteTextFile(path, content);
        return {name, path};
    }

    bool Pack(const std::vector<PackedFile>& files) { return scenario_package::Pack(files, package, problem); }

    std::string Unpacked(const std::wstring& name) { return ReadTextFile(directory / (L"unpacked\\" + name)); }

    const TemporaryDirectory directory;
    const std::wstring package = directory / L"scenario.esa";
    std::wstring problem;
    int count = 0;
};

TEST_F(ScenarioPackagePackTest, WhatWasPackedIsUnpackedAgain) {
    const std::string text(100000, 'x');
    const std::string noise = "\x01\xfe\x02\xfd";
    ASSERT_TRUE(Pack({File("manifest.json", "{}"), File("lib/long.txt", text), File("lib/noise.bin", noise),
                      File("empty", ""), File("caf\xc3\xa9.txt", "e")}))
        << std::string(problem.begin(), problem.end());
    ASSERT_TRUE(scenario_package::Unpack(package, directory / L"unpacked", problem));
    EXPECT_EQ(Unpacked(L"manifest.json"), "{}");
    EXPECT_EQ(Unpacked(L"lib\\long.txt"), text);
    EXPECT_EQ(Unpacked(L"lib\\noise.bin"), noise);
    EXPECT_EQ(Unpacked(L"empty"), "");
    EXPECT_EQ(Unpacked(L"caf\xe9.txt"), "e");
    EXPECT_LT(ReadTextFile(package).size(), 2000U);
}

TEST_F(ScenarioPackagePackTest, EqualFilesGiveEqualBytes) {
    const std::vector<PackedFile> files = {File("a", "1"), File("b", "2")};
    ASSERT_TRUE(Pack(files));
    const std::string first = ReadTextFile(package);
    WriteTextFile(files[0].path, "1");
    ASSERT_TRUE(Pack(files));
    EXPECT_EQ(ReadTextFile(package), first);
}

TEST_F(ScenarioPackagePackTest, ContentThatWouldGrowTooMuchIsStored) {
    ASSERT_TRUE(Pack({File("zeros", std::string(std::size_t{4} << 20, '\0'))}));
    scenario_package::Package opened;
    ASSERT_TRUE(opened.Open(package, problem));
    EXPECT_TRUE(opened.HasFile("zeros"));
    EXPECT_FALSE(opened.HasFile("zero"));
}

TEST_F(ScenarioPackagePackTest, WhatNoReaderWouldTakeIsNotWritten) {
    WriteTextFile(package, "the one before");
    for (const char* const name : {"../a", "/a", "a\\b", "con", "c:a"}) {
        EXPECT_FALSE(Pack({File(name, "x")})) << name;
        EXPECT_NE(problem.find(L"scenario.esa cannot be made: "), std::wstring::npos);
    }
    EXPECT_FALSE(Pack({File("a", "1"), File("A", "2")}));
    EXPECT_FALSE(Pack({{"a", directory / L"missing"}}));
    EXPECT_EQ(ReadTextFile(package), "the one before");
    EXPECT_FALSE(platform::Exists(package + L".part"));
}

TEST_F(ScenarioPackagePackTest, TooManyFilesAreRefused) {
    const PackedFile one = File("", "x");
    std::vector<PackedFile> files;
    for (int number = 0; number <= 10000; ++number) {
        files.push_back({"f" + std::to_string(number), one.path});
    }
    EXPECT_FALSE(Pack(files));
    files.pop_back();
    EXPECT_TRUE(Pack(files));
}

} // namespace

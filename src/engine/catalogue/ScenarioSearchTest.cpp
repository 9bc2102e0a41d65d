#include "engine/catalogue/ScenarioSearch.h"

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

class ScenarioSearchTest : public testing::Test {
protected:
    void Write(const std::wstring& name) { WriteTextFile(directory / name, ""); }

    Texts Find(bool onlyWithSettings = false) {
        std::vector<ScenarioFile> files;
        FindScenarioFiles({directory.Path(), L"L"}, files);
        Texts paths;
        for (const ScenarioFile& file : files) {
            if (file.hasSettings || !onlyWithSettings) {
                paths.push_back(RelativePath(file));
            }
        }
        return paths;
    }

    Texts FindWithSettings() { return Find(true); }

    TemporaryDirectory directory;
};

TEST_F(ScenarioSearchTest, FoundFileKnowsWhereItStands) {
    Write(L"a\\x.esa");
    std::vector<ScenarioFile> files;
    FindScenarioFiles({directory.Path(), L"L"}, files);
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].extension, L".esa");
    EXPECT_EQ(files[0].root, directory.Path());
    EXPECT_EQ(files[0].relativeDirectory, L"a");
    EXPECT_EQ(files[0].baseName, L"x");
    EXPECT_EQ(files[0].label, L"L");
    EXPECT_EQ(FullPath(files[0]), directory / L"a\\x.esa");
    EXPECT_EQ(SettingsPath(files[0]), directory / L"a\\x.adc");
    EXPECT_EQ(LabelPrefix(files[0]), L"L : ");
}

TEST_F(ScenarioSearchTest, FilesOfADirectoryAreVisitedBeforeTheNextOneIsListed) {
    Write(L"1.rb");
    Write(L"a\\2.rb");
    Texts visited;
    const auto visit = [&](const ScenarioFile& file) {
        visited.push_back(RelativePath(file));
        Write(L"a\\3.rb");
    };
    EXPECT_TRUE(VisitScenarioFiles({directory.Path(), L""}, visit).empty());
    EXPECT_EQ(visited, (Texts{L"1.rb", L"a\\2.rb", L"a\\3.rb"}));
}

TEST_F(ScenarioSearchTest, MissingRootHasNoFilesAndIsNamed) {
    std::vector<ScenarioFile> files;
    const std::vector<UnreadableDirectory> unreadable = FindScenarioFiles({directory / L"missing", L""}, files);
    EXPECT_TRUE(files.empty());
    ASSERT_EQ(unreadable.size(), 1U);
    EXPECT_EQ(unreadable[0].path, directory / L"missing");
    EXPECT_EQ(unreadable[0].error.kind, platform::ErrorKind::NotFound);
}

TEST_F(ScenarioSearchTest, AFileKnowsWhetherItHasSettings) {
    for (const wchar_t* name : {L"a\\x.rb", L"b\\x.rb", L"b\\x.adc"}) {
        Write(name);
    }
    EXPECT_EQ(FindWithSettings(), Texts{L"b\\x.rb"});
}

TEST_F(ScenarioSearchTest, SettingsOfAnotherScenarioAreNotItsOwn) {
    for (const wchar_t* name : {L"x.rb", L"y.rb", L"y.adc"}) {
        Write(name);
    }
    EXPECT_EQ(FindWithSettings(), Texts{L"y.rb"});
}

TEST_F(ScenarioSearchTest, SettingsAreMatchedAsTheSystemMatchesNames) {
    Write(L"Part.rb");
    Write(L"part.adc");
    EXPECT_EQ(!FindWithSettings().empty(), platform::Exists(directory / L"PART.ADC"));
}

TEST_F(ScenarioSearchTest, FileThatIsOnlyAnExtensionHasAnEmptyName) {
    Write(L".rb");
    EXPECT_EQ(Find(), Texts{L".rb"});
}

TEST_F(ScenarioSearchTest, ExtensionsAreMatchedAsTheSystemMatchesNames) {
    Write(L"x.RB");
    const Texts found = Find();
    if (platform::HasExtension(L"x.RB", L".rb")) {
        EXPECT_EQ(found, Texts{L"x.rb"}); // the extension has the spelling of the search
    } else {
        EXPECT_EQ(found, Texts());
    }
}

TEST_F(ScenarioSearchTest, LinkToADirectoryElsewhereIsWalkedInto) {
    const TemporaryDirectory elsewhere;
    WriteTextFile(elsewhere / L"sub\\x.rb", "");
    if (!MakeLink(elsewhere.Path(), directory / L"link")) {
        GTEST_SKIP() << "This system or user makes no links to folders.";
    }
    EXPECT_EQ(Find(), Texts{L"link\\sub\\x.rb"});
}

TEST_F(ScenarioSearchTest, LinkThatLeadsBackUpItsPathIsNotWalkedInto) {
    Write(L"a\\b\\x.rb");
    if (!MakeLink(directory.Path(), directory / L"a\\b\\root")) {
        GTEST_SKIP() << "This system or user makes no links to folders.";
    }
    ASSERT_TRUE(MakeLink(directory / L"a", directory / L"a\\b\\parent"));
    ASSERT_TRUE(MakeLink(directory / L"a\\b", directory / L"a\\b\\itself"));
    EXPECT_EQ(Find(), Texts{L"a\\b\\x.rb"});
}

TEST_F(ScenarioSearchTest, LinksThatLeadToOneAnotherComeToAnEnd) {
    Write(L"a\\1.rb");
    Write(L"b\\2.rb");
    if (!MakeLink(directory / L"b", directory / L"a\\to_b")) {
        GTEST_SKIP() << "This system or user makes no links to folders.";
    }
    ASSERT_TRUE(MakeLink(directory / L"a", directory / L"b\\to_a"));
    EXPECT_EQ(Find(), (Texts{L"a\\1.rb", L"b\\2.rb", L"a\\to_b\\2.rb", L"b\\to_a\\1.rb"}));
}

TEST_F(ScenarioSearchTest, SecondLinkToTheSameDirectoryIsWalkedIntoToo) {
    Write(L"a\\x.rb");
    if (!MakeLink(directory / L"a", directory / L"b")) {
        GTEST_SKIP() << "This system or user makes no links to folders.";
    }
    EXPECT_EQ(Find(), (Texts{L"a\\x.rb", L"b\\x.rb"}));
}

} // namespace

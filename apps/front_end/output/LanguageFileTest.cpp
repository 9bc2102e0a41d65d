#include "front_end/output/LanguageFile.h"

#include "front_end/output/BuiltInStrings.h"
#include "kit/front_end/CommandContextFixture.h"
#include "platform/system/Environment.h"

namespace {

using front_end::LanguageProblems;
using Keys = std::vector<std::wstring>;

class LanguageFileTest : public CommandContextFixture {
protected:
    LanguageFileTest() {
        UseSettings(R"({"version":1,"logFile":"","culture":"fr-FR","defaultCulture":"en-US"})");
        for (const wchar_t* const name : variables) {
            before.push_back(platform::GetEnvironment(name).value_or(std::wstring()));
            platform::SetEnvironment(name, directory / L"configuration");
        }
        WriteTextFile(strings, front_end::builtInStrings);
    }

    ~LanguageFileTest() override {
        for (std::size_t i = 0; i < before.size(); ++i) {
            platform::SetEnvironment(variables[i], before[i]);
        }
    }

    std::wstring Text(const std::wstring& key) const { return front_end::Texts(strings).Get(key); }

    std::wstring UsersFile() const { return front_end::LanguageFiles(strings, L"fr-FR").front(); }

    bool Check(const std::string& json) {
        WriteTextFile(directory / L"checked.json", json);
        return front_end::CheckLanguageFile(directory / L"checked.json", sections, problem);
    }

    const std::vector<const wchar_t*> variables = {L"XDG_CONFIG_HOME", L"APPDATA"};
    std::vector<std::wstring> before;
    const std::wstring strings = directory / L"strings.json";
    const std::wstring besideStrings = directory / L"strings.fr-FR.json";
    std::map<std::wstring, LanguageProblems> sections;
    std::wstring problem;
};

TEST_F(LanguageFileTest, AFileBesideTheStringsTranslatesAndWhatItLacksIsEnglish) {
    EXPECT_EQ(Text(L"Table/State"), L"State");
    WriteTextFile(besideStrings, R"({"fr-FR":{"Table":{"State":"Etat","Time":""}}})");
    EXPECT_EQ(Text(L"Table/State"), L"Etat");
    EXPECT_EQ(Text(L"Table/Time"), L"Time");
    EXPECT_EQ(Text(L"Table/Job"), L"Job");
}

TEST_F(LanguageFileTest, TheUsersFileComesBeforeThatOfTheInstallation) {
    WriteTextFile(besideStrings, R"({"fr-FR":{"Table":{"State":"Etat","Time":"Duree"}}})");
    WriteTextFile(UsersFile(), R"({"fr-FR":{"Table":{"State":"Statut"}}})");
    EXPECT_NE(UsersFile(), besideStrings);
    EXPECT_EQ(Text(L"Table/State"), L"Statut");
    EXPECT_EQ(Text(L"Table/Time"), L"Duree");
}

TEST_F(LanguageFileTest, TheDefaultCultureMayBeALanguageFileToo) {
    UseSettings(R"({"version":1,"logFile":"","culture":"xx","defaultCulture":"fr-FR"})");
    WriteTextFile(besideStrings, R"({"fr-FR":{"Table":{"State":"Etat"}}})");
    EXPECT_EQ(Text(L"Table/State"), L"Etat");
    EXPECT_EQ(Text(L"Table/Job"), L"Job");
}

TEST_F(LanguageFileTest, ABrokenFileIsPassedOver) {
    WriteTextFile(besideStrings, "{broken");
    EXPECT_EQ(Text(L"Table/State"), L"State");
}

TEST_F(LanguageFileTest, TheOwnTextsLackNothing) {
    ASSERT_TRUE(Check(front_end::builtInStrings));
    ASSERT_EQ(sections.size(), 2U);
    for (const auto& [culture, problems] : sections) {
        EXPECT_EQ(problems.missing, Keys());
        EXPECT_EQ(problems.unknown, Keys());
        EXPECT_EQ(problems.differing, Keys());
    }
}

TEST_F(LanguageFileTest, MissingUnknownAndDifferingTextsAreNamed) {
    ASSERT_TRUE(Check(R"({"fr-FR":{"Table":{"State":"","Tim":"Duree"},"Outcome":{"Deleted":"Le travail {1}",
        "Again":"{1} comme {0}"}}})"));
    const LanguageProblems& problems = sections.at(L"fr-FR");
    const auto isMissing = [&](const std::wstring& key) {
        return std::find(problems.missing.begin(), problems.missing.end(), key) != problems.missing.end();
    };
    EXPECT_TRUE(isMissing(L"Table/State") && isMissing(L"Table/Time") && isMissing(L"Errors/NoHost"));
    EXPECT_FALSE(isMissing(L"Outcome/Again") || isMissing(L"Outcome/Deleted"));
    EXPECT_EQ(problems.unknown, Keys{L"Table/Tim"});
    EXPECT_EQ(problems.differing, Keys{L"Outcome/Deleted"});
}

TEST_F(LanguageFileTest, TheFilesOfACultureAreCheckedTogether) {
    WriteTextFile(besideStrings, R"({"fr-FR":{"Table":{"State":"Etat","Time":"","Job":"Travail"}}})");
    WriteTextFile(UsersFile(), R"({"fr-FR":{"Table":{"Time":"Duree","Tim":"Duree"}}})");
    const front_end::CultureProblems problems = front_end::CheckCulture(strings, L"fr-FR");
    const Keys& missing = problems.texts.missing;
    for (const wchar_t* const key : {L"Table/State", L"Table/Time", L"Table/Job"}) {
        EXPECT_EQ(std::count(missing.begin(), missing.end(), key), 0);
    }
    EXPECT_EQ(std::count(missing.begin(), missing.end(), L"Table/Progress"), 1);
    EXPECT_EQ(problems.texts.unknown, Keys{L"Table/Tim"});
    EXPECT_EQ(problems.file, UsersFile());
}

TEST_F(LanguageFileTest, ACultureWithOtherWordsForSomeTextsLacksNothing) {
    WriteTextFile(directory / L"strings.de-DE.json", R"({"de-DE":{"Table":{"State":"Lage"}}})");
    for (const wchar_t* const culture : {L"de-DE", L"en-US"}) {
        const front_end::CultureProblems problems = front_end::CheckCulture(strings, culture);
        EXPECT_EQ(problems.texts.missing, Keys());
        EXPECT_TRUE(problems.unusable.empty());
    }
}

TEST_F(LanguageFileTest, OfACultureWithoutAnyFileAllIsMissingButOfEnglishNothing) {
    EXPECT_GT(front_end::CheckCulture(directory / L"none.json", L"fr-FR").texts.missing.size(), 100U);
    EXPECT_EQ(front_end::CheckCulture(directory / L"none.json", L"fr-FR").file, UsersFile());
    EXPECT_EQ(front_end::CheckCulture(directory / L"none.json", L"en-US").texts.missing, Keys());
}

TEST_F(LanguageFileTest, AFileOfACultureThatCannotBeUsedIsNamed) {
    WriteTextFile(UsersFile(), "{broken");
    const front_end::CultureProblems problems = front_end::CheckCulture(strings, L"fr-FR");
    ASSERT_EQ(problems.unusable.size(), 1U);
    EXPECT_EQ(problems.unusable.front().first, UsersFile());
}

TEST_F(LanguageFileTest, WhatIsNoLanguageFileIsRefused) {
    for (const char* const json : {"", "{", "[]", "{}", R"({"fr-FR":[]})", R"({"fr-FR":{"Table":"State"}})",
                                   R"({"fr-FR":{"Table":{"State":7}}})"}) {
        EXPECT_FALSE(Check(json)) << json;
        EXPECT_NE(problem, L"");
    }
    EXPECT_FALSE(front_end::CheckLanguageFile(directory / L"none.json", sections, problem));
    EXPECT_TRUE(sections.empty());
}

} // namespace

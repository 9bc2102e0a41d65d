#include "front_end/output/Texts.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "front_end/output/BuiltInStrings.h"
#include "kit/front_end/CadjobsFixture.h"

namespace {

class TextsTest : public CadjobsFixture {
protected:
    void UseCulture(const std::string& culture, const std::string& defaultCulture) {
        UseSettings(R"({"version":1,"logFile":"","culture":")" + culture + R"(","defaultCulture":")" + defaultCulture +
                    "\"}");
    }

    std::wstring UseStrings(const std::string& json) {
        stringResourceFile = directory / L"strings.json";
        WriteTextFile(stringResourceFile, json);
        return stringResourceFile;
    }
};

TEST_F(TextsTest, InTheCultureOfTheSettings) {
    UseCulture("de-DE", "en-US");
    UseStrings(front_end::builtInStrings);
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output, "Es gibt keine Jobs.\n");
}

TEST_F(TextsTest, AnUntranslatedTextIsTheDefaultCultures) {
    UseCulture("de-DE", "fr-FR");
    const front_end::Texts texts(UseStrings(
        R"({"de-DE":{"Table":{"Job":"Auftrag"}},"fr-FR":{"Table":{"State":"Etat"}},"en-US":{"Table":{"Time":"no"}}})"));
    EXPECT_EQ(texts.Get(L"Table/Job"), L"Auftrag");
    EXPECT_EQ(texts.Get(L"Table/State"), L"Etat");
    EXPECT_EQ(texts.Get(L"Table/Time"), L"Time");
    EXPECT_EQ(texts.Get(L"No/Such"), L"No/Such");
}

TEST_F(TextsTest, AnEmptyTextOrAGroupThatIsNoneIsTheDefaultCultures) {
    UseCulture("de-DE", "fr-FR");
    const front_end::Texts texts(UseStrings(R"({"de-DE":{"Table":{"State":""},"Status":"none"},)"
                                            R"("fr-FR":{"Table":{"State":"Etat"},"Status":{"Queued":"En attente"}}})"));
    EXPECT_EQ(texts.Get(L"Table/State"), L"Etat");
    EXPECT_EQ(texts.Get(L"Status/Queued"), L"En attente");
}

TEST_F(TextsTest, WithoutAFileTheBuiltInEnglishHolds) {
    UseCulture("de-DE", "de-DE");
    const front_end::Texts texts(directory / L"missing.json");
    EXPECT_EQ(texts.Get(L"Table/State"), L"State");
}

TEST_F(TextsTest, ValuesTakeTheirPlaces) {
    const front_end::Texts texts(UseStrings(R"({"en-US":{"A":{"b":"{1} of {0}{0}, {2}, {x}, {","c":"none"}}})"));
    EXPECT_EQ(texts.Format(L"A/b", {L"{1}", L"two"}), L"two of {1}{1}, {2}, {x}, {");
    EXPECT_EQ(texts.Format(L"A/c", {L"unused"}), L"none");
}

TEST_F(TextsTest, ValuesForgeNoLineAndSteerNoTerminal) {
    const front_end::Texts texts(UseStrings(R"({"en-US":{"A":{"b":"first {0}\nsecond"}}})"));
    EXPECT_EQ(texts.Format(L"A/b", {L"a\ncadjobs: forged\x1b[2J\u202e"}),
              L"first a\\ncadjobs: forged\\u001b[2J\\u202e\nsecond");
}

/// The names of all members: texts followed by a colon.
std::vector<std::string> KeysOf(const std::string& section) {
    std::vector<std::string> keys;
    for (std::size_t end = section.find("\":"); end != std::string::npos; end = section.find("\":", end + 1)) {
        const std::size_t begin = section.rfind('"', end - 1) + 1;
        keys.push_back(section.substr(begin, end - begin));
    }
    return keys;
}

TEST_F(TextsTest, EveryTextIsTranslated) {
    std::wstring english;
    std::wstring german;
    const std::wstring all = text::FromUtf8(front_end::builtInStrings);
    ASSERT_TRUE(ControllerCSWrapper::GetStringResources(all, L"en-US", english));
    ASSERT_TRUE(ControllerCSWrapper::GetStringResources(all, L"de-DE", german));
    EXPECT_EQ(KeysOf(text::ToUtf8(english)), KeysOf(text::ToUtf8(german)));
    EXPECT_GT(KeysOf(text::ToUtf8(english)).size(), 60U);
}

TEST_F(TextsTest, GermanTable) {
    UseCulture("de-DE", "en-US");
    UseStrings(front_end::builtInStrings);
    host.jobs = {Job(1, L"a.stl", JobStatus::Canceling), Job(2, L"b.stl", JobStatus::Queued)};
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(
        console.output,
        "Job  Status            Fortschritt  Zeit  Szenario     Eingabe  Ausgabeordner oder Meldung des Szenarios\n"
        "  1  Wird abgebrochen          0 %        Mesh report  a.stl\n"
        "  2  Wartet                    0 %        Mesh report  b.stl\n");
}

TEST_F(TextsTest, GermanUsageErrors) {
    UseCulture("de-DE", "en-US");
    UseStrings(front_end::builtInStrings);
    EXPECT_EQ(Run({L"list", L"--limit", L"0"}), 2);
    EXPECT_EQ(console.errors, "cadjobs: --limit nimmt eine ganze Zahl ab 1, nicht 0.\n"
                              "Hilfe: cadjobs --help\n");
}

TEST_F(TextsTest, HelpHasExamplesInBothLanguages) {
    EXPECT_EQ(Run({L"--help"}), 0);
    EXPECT_NE(console.output.find("\nExamples:\n  cadjobs run mesh_report.rb"), std::string::npos);
    console.output.clear();
    UseCulture("de-DE", "en-US");
    UseStrings(front_end::builtInStrings);
    EXPECT_EQ(Run({L"--help"}), 0);
    EXPECT_NE(console.output.find("\nBeispiele:\n  cadjobs run mesh_report.rb"), std::string::npos);
}

TEST_F(TextsTest, Version) {
    EXPECT_EQ(Run({L"--version"}), 0);
    EXPECT_EQ(console.output, "cadjobs " CONTROLLER_VERSION "\n");
}

} // namespace

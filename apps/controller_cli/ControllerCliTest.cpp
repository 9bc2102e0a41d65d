#include "controller_cli/command_line/MovedOptions.h"
#include "front_end/output/BuiltInStrings.h"
#include "kit/front_end/CadjobsFixture.h"
#include "kit/front_end/ControllerCliFixture.h"
#include "platform/files/FileSystem.h"
#include "text/Text.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace {

using Arguments = std::vector<std::wstring>;

class ControllerCliTest : public ControllerCliFixture {
protected:
    void UseGerman() {
        UseSettings(R"({"version":1,"logFile":"","culture":"de-DE","defaultCulture":"en-US"})");
        stringResourceFile = directory / L"strings.json";
        WriteTextFile(stringResourceFile, front_end::builtInStrings);
    }

    /// What goes to standard error.
    std::string Refused(const Arguments& arguments) {
        console.errors.clear();
        EXPECT_EQ(Run(arguments), 2) << text::ToUtf8(arguments.front());
        return console.errors;
    }
};

std::string Replaced(const std::string& option, const std::string& replacement) {
    return "controller_cli: " + option + " is no option of this program any longer. Use: " + replacement + "\n";
}

TEST_F(ControllerCliTest, EachLongOptionOfEarlierVersionsNamesWhatToUseAndDoesNothing) {
    host.runs = false;
    for (const front_end::MovedOption& moved : front_end::MovedOptions()) {
        const std::string message = Replaced(text::ToUtf8(moved.option), text::ToUtf8(moved.replacement));
        EXPECT_EQ(Refused({moved.option}), message);
        EXPECT_EQ(Refused({moved.option, L"3"}), message);
        EXPECT_EQ(Refused({moved.option + L"=3"}), message);
        EXPECT_EQ(Refused({L"-f", moved.option}), message);
    }
    EXPECT_EQ(console.output, "");
    EXPECT_EQ(host.startCount, 0);
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(ControllerCliTest, AnEarlierCommandIsNamedRatherThanItsOptions) {
    EXPECT_EQ(Refused({L"--json", L"--list"}), Replaced("--list", "cadjobs list"));
    EXPECT_EQ(Refused({L"--output", L"o", L"--run", L"a.rb", L"b"}), Replaced("--run", "cadjobs run"));
    EXPECT_EQ(Refused({L"--client-only", L"--stop-host"}), Replaced("--stop-host", "cadjobs host stop"));
    EXPECT_EQ(Refused({L"jobs.json", L"--log-file", L"a.log"}), Replaced("--log-file", "controller_cli -l"));
}

/// The words of "cadjobs clean --state".
Arguments WordsOf(const std::wstring& line) {
    std::wistringstream stream(line);
    return {std::istream_iterator<std::wstring, wchar_t>(stream), std::istream_iterator<std::wstring, wchar_t>()};
}

TEST_F(ControllerCliTest, WhatIsToBeUsedExists) {
    for (const front_end::MovedOption& moved : front_end::MovedOptions()) {
        const Arguments words = WordsOf(moved.replacement);
        if (words[0] == L"controller_cli") {
            continue;
        }
        Arguments help = {words.begin() + 1, std::find_if(words.begin(), words.end(), [](const std::wstring& word) {
                              return word.starts_with(L"--");
                          })};
        help.push_back(L"--help");
        console.output.clear();
        EXPECT_EQ(RunProgram(L"cadjobs", front_end::RunCadjobs, help), 0);
        EXPECT_NE(console.output.find("Usage: cadjobs " + text::ToUtf8(words[1])), std::string::npos);
        EXPECT_NE(console.output.find(text::ToUtf8(words.back())), std::string::npos) << console.output;
    }
}

TEST_F(ControllerCliTest, ALongOptionThatNeverWasIsWrongUse) {
    EXPECT_EQ(Refused({L"--lost"}), "controller_cli: The argument --lost means nothing here.\n"
                                    "Help: controller_cli --help\n");
}

TEST_F(ControllerCliTest, BehindTwoDashesAreJobsFilesOnly) {
    for (const wchar_t* const name : {L"--list", L"--help", L"--version"}) {
        EXPECT_EQ(Refused({L"-f", L"--", name}).find("controller_cli: The jobs file cannot be used: "), 0U)
            << console.errors;
    }
}

TEST_F(ControllerCliTest, HelpIsGivenBesideAnyCommand) {
    for (const Arguments& arguments : {Arguments{L"jobs.json", L"--help"}, Arguments{L"-s", L"3", L"--help"},
                                       Arguments{L"--help", L"-x"}, Arguments{L"--list", L"--help"}}) {
        console.output.clear();
        EXPECT_EQ(Run(arguments), 0);
        EXPECT_EQ(console.output.find("Usage: controller_cli [OPTIONS] [FILE]\n"), 0U);
    }
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(ControllerCliTest, HelpHasExamplesAndNamesTheProgramForPeopleInBothLanguages) {
    EXPECT_EQ(Run({L"--help"}), 0);
    EXPECT_NE(console.output.find("\nExamples:\n  controller_cli jobs.json"), std::string::npos);
    EXPECT_NE(console.output.find("See: cadjobs --help\n"), std::string::npos);
    console.output.clear();
    UseGerman();
    EXPECT_EQ(Run({L"--help"}), 0);
    EXPECT_NE(console.output.find("\nBeispiele:\n  controller_cli jobs.json"), std::string::npos);
    EXPECT_NE(console.output.find("Siehe: cadjobs --help\n"), std::string::npos);
}

TEST_F(ControllerCliTest, GermanUsageErrors) {
    UseGerman();
    EXPECT_EQ(Refused({L"-s1", L"-c2"}), "controller_cli: Nur ein Befehl auf einmal.\n"
                                         "Hilfe: controller_cli --help\n");
}

TEST_F(ControllerCliTest, Version) {
    EXPECT_EQ(Run({L"--version"}), 0);
    EXPECT_EQ(console.output, "controller_cli " CONTROLLER_VERSION "\n");
}

TEST_F(ControllerCliTest, HelpAndVersionThatCannotBeWrittenAreTold) {
    console.outputError = {platform::ErrorKind::NoSpace, 0};
    for (const wchar_t* const option : {L"--help", L"--version"}) {
        EXPECT_EQ(Refused({option}), "controller_cli: Standard output cannot be written: No space left\n");
    }
}

TEST_F(ControllerCliTest, NeitherHelpNorVersionNeedsSettings) {
    UseSettings("{\"version\":1,\"logFile\":\"\",\"culture\":7}");
    EXPECT_EQ(Run({L"--help"}), 0);
    EXPECT_EQ(Run({L"--version"}), 0);
    EXPECT_EQ(console.errors, "");
}

} // namespace

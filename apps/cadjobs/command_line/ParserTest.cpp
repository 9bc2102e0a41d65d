#include "cadjobs/command_line/Parser.h"

#include <gtest/gtest.h>

#include "kit/front_end/BuiltInTexts.h"
#include "text/Text.h"

namespace front_end {

static void PrintTo(const UsageProblem& problem, std::ostream* out) {
    *out << text::ToUtf8(problem.textKey) << " " << text::ToUtf8(problem.argument) << " "
         << text::ToUtf8(problem.suggestion);
}

} // namespace front_end

namespace {

using front_end::Command;
using front_end::CommandKind;
using front_end::UsageProblem;
using Arguments = std::vector<std::wstring>;

Command Parsed(const Arguments& arguments) {
    return front_end::ParseSubcommand(BuiltInTexts(), arguments).command;
}

UsageProblem Refused(const Arguments& arguments) {
    try {
        (void)Parsed(arguments);
    } catch (const UsageProblem& problem) {
        return problem;
    }
    ADD_FAILURE() << "was parsed";
    return {};
}

TEST(ParserTest, NothingIsTheOverview) {
    EXPECT_EQ(Parsed({}), Command{.kind = CommandKind::Overview});
    Command expected{.kind = CommandKind::Overview};
    expected.asJson = true;
    EXPECT_EQ(Parsed({L"--json"}), expected);
}

TEST(ParserTest, ARunHasAScenarioAndInputs) {
    Command expected{.kind = CommandKind::Run};
    expected.scenario = L"report.rb";
    expected.inputs = {L"a.stl", L"list", L"-odd.stl"};
    expected.outputFolder = L"out";
    expected.priority = L"-7";
    expected.needs = {L"cad=1", L"memory=2"};
    expected.reuse = false;
    EXPECT_EQ(Parsed({L"run", L"report.rb", L"a.stl", L"list", L"--output", L"out", L"--priority", L"-7", L"--need",
                      L"cad=1", L"--need=memory=2", L"--no-reuse", L"--", L"-odd.stl"}),
              expected);
}

TEST(ParserTest, ARunTakesWhatIsDecidedAboutItsJobs) {
    const Command expected{.kind = CommandKind::Run,
                           .scenario = L"\xe4.rb",
                           .inputs = {L"/a.stl", L"C:\\\xdf.stl"},
                           .outputFolder = L"o",
                           .runArgument = L"x=1 y=2",
                           .logFile = L"/x/a.log",
                           .notBefore = L"2h",
                           .after = {L"1", L"2"},
                           .afterEnd = {L"3"},
                           .retries = L"2",
                           .retryDelay = L"30s",
                           .timeLimit = L"2h",
                           .silenceLimit = L"10m",
                           .memoryLimit = L"4000",
                           .cpuLimit = L"150",
                           .retriesWithBackoff = true,
                           .retriesOnlyAfterCrash = true,
                           .skipsIfAfterFails = true,
                           .isOnHold = true,
                           .reuse = true,
                           .asJson = true,
                           .clientOnly = true};
    EXPECT_EQ(Parsed({L"-f",
                      L"run",
                      L"--output=o",
                      L"\xe4.rb",
                      L"/a.stl",
                      L"C:\\\xdf.stl",
                      L"--argument",
                      L"x=1 y=2",
                      L"-l",
                      L"/x/a.log",
                      L"--not-before",
                      L"2h",
                      L"--after",
                      L"1,2",
                      L"--after-end=3",
                      L"--retries",
                      L"2",
                      L"--retry-delay",
                      L"30s",
                      L"--retry-backoff",
                      L"--retry-only-after-crash",
                      L"--time-limit",
                      L"2h",
                      L"--silence-limit=10m",
                      L"--memory-limit",
                      L"4000",
                      L"--cpu-limit",
                      L"150",
                      L"--skip-if-after-fails",
                      L"--on-hold",
                      L"--reuse",
                      L"--json"}),
              expected);
}

TEST(ParserTest, WhatIsMissingIsNamed) {
    EXPECT_EQ(Refused({L"run"}), (UsageProblem{L"Usage/OperandMissing", L"SCENARIO INPUT"}));
    EXPECT_EQ(Refused({L"run", L"report.rb"}), (UsageProblem{L"Usage/OperandMissing", L"INPUT"}));
    EXPECT_EQ(Refused({L"run", L"--", L"report.rb"}), (UsageProblem{L"Usage/OperandMissing", L"INPUT"}));
    EXPECT_EQ(Refused({L"check"}), (UsageProblem{L"Usage/OperandMissing", L"SCENARIO"}));
    EXPECT_EQ(Refused({L"parameters", L" "}), (UsageProblem{L"Usage/OperandMissing", L"SCENARIO"}));
}

TEST(ParserTest, NothingBehindTwoDashesIsAnOption) {
    Command expected{.kind = CommandKind::Run, .scenario = L"r.rb", .inputs = {L"a", L"-b", L"--help", L"--"}};
    EXPECT_EQ(Parsed({L"run", L"r.rb", L"a", L"--", L"-b", L"--help", L"--"}), expected);
    expected = {.kind = CommandKind::Run, .scenario = L"-r.rb", .inputs = {L"-a"}, .asJson = true};
    EXPECT_EQ(Parsed({L"run", L"--json", L"--", L"-r.rb", L"-a"}), expected);
    EXPECT_EQ(Parsed({L"wait", L"--", L"3"}), (Command{.kind = CommandKind::Wait, .ids = {L"3"}}));
    EXPECT_EQ(Parsed({L"list", L"--"}), Command{.kind = CommandKind::List});
    EXPECT_EQ(Refused({L"pause", L"--", L"a"}), (UsageProblem{L"Usage/UnknownArgument", L"a"}));
}

TEST(ParserTest, JobsHaveBlanksOrCommasBetweenThem) {
    Command expected{.kind = CommandKind::Cancel};
    expected.ids = {L"3", L"5-7", L"last"};
    expected.isConfirmed = true;
    EXPECT_EQ(Parsed({L"cancel", L"3,5-7", L"last", L"--yes"}), expected);
    EXPECT_EQ(Parsed({L"cancel", L"-y", L"3, 5-7,", L"last"}), expected);
    EXPECT_EQ(Parsed({L"wait", L" 1, 2 ,\t3f9a0c1,,"}).ids, (Arguments{L"1", L"2", L"3f9a0c1"}));
    EXPECT_EQ(Parsed({L"log", L" 3 "}).ids, Arguments{L"3"});
}

TEST(ParserTest, ConditionsSelectJobsToo) {
    Command expected{.kind = CommandKind::Delete};
    expected.states = {L"Failed", L"Canceled", L"Success"};
    expected.olderThan = L"7d";
    EXPECT_EQ(Parsed({L"delete", L"--state", L"Failed,Canceled", L"-s", L"Success", L"--older-than=7d"}), expected);
}

TEST(ParserTest, NoJobsAreNeverAllJobs) {
    for (const wchar_t* const name :
         {L"show", L"wait", L"log", L"cancel", L"delete", L"again", L"edit", L"hold", L"release"}) {
        EXPECT_EQ(Refused({name}), (UsageProblem{L"Usage/NoIds", {}}));
        EXPECT_EQ(Refused({name, L""}), (UsageProblem{L"Usage/NoIds", {}}));
        EXPECT_EQ(Refused({name, L" , "}), (UsageProblem{L"Usage/NoIds", {}}));
    }
    EXPECT_EQ(Parsed({L"cancel", L"--all"}).kind, CommandKind::CancelAll);
}

TEST(ParserTest, AListTakesOrderColumnsAndLimit) {
    Command expected{.kind = CommandKind::List};
    expected.sortColumn = L"ended";
    expected.isReversed = true;
    expected.columns = {L"number", L"state"};
    expected.groupColumn = L"scenario";
    expected.limit = L"10";
    expected.showsAll = true;
    EXPECT_EQ(Parsed({L"list", L"--sort", L"ended", L"--reverse", L"--columns", L"number,state", L"--group-by",
                      L"scenario", L"-n10", L"--all"}),
              expected);
}

TEST(ParserTest, AHostIsStartedStoppedAndLookedFor) {
    EXPECT_EQ(Parsed({L"host", L"start"}).kind, CommandKind::StartHost);
    EXPECT_EQ(Parsed({L"host", L"stop"}).kind, CommandKind::StopHost);
    EXPECT_EQ(Parsed({L"host", L"status", L"--json"}).kind, CommandKind::HostStatus);
    EXPECT_TRUE(Parsed({L"host", L"status", L"--json"}).asJson);
    EXPECT_EQ(Refused({L"host"}), (UsageProblem{L"Usage/OperandMissing", L"start, stop, status"}));
    EXPECT_EQ(Refused({L"host", L"stpo"}), (UsageProblem{L"Usage/DidYouMean", L"stpo", L"stop"}));
}

TEST(ParserTest, SettingsAreCheckedShownAndFound) {
    EXPECT_EQ(Parsed({L"settings", L"check"}).kind, CommandKind::SettingsCheck);
    EXPECT_EQ(Parsed({L"settings", L"check", L"a.json"}).operands, Arguments{L"a.json"});
    EXPECT_EQ(Parsed({L"settings", L"show"}).kind, CommandKind::SettingsShow);
    EXPECT_EQ(Parsed({L"settings", L"path"}).kind, CommandKind::SettingsPath);
    EXPECT_EQ(Refused({L"settings"}), (UsageProblem{L"Usage/OperandMissing", L"check, language, show, path"}));
}

TEST(ParserTest, WhatIsUnknownIsRefusedWithWhatMayBeMeant) {
    EXPECT_EQ(Refused({L"lsit", L"3"}), (UsageProblem{L"Usage/DidYouMean", L"lsit", L"list"}));
    EXPECT_EQ(Refused({L"list", L"--sate", L"Failed"}), (UsageProblem{L"Usage/DidYouMean", L"--sate", L"--state"}));
    EXPECT_EQ(Refused({L"list", L"--sate=Failed"}), (UsageProblem{L"Usage/DidYouMean", L"--sate=Failed", L"--state"}));
    EXPECT_EQ(Refused({L"watch", L"3"}), (UsageProblem{L"Usage/UnknownArgument", L"3"}));
    EXPECT_EQ(Refused({L"log", L"3", L"4"}), (UsageProblem{L"Usage/UnknownArgument", L"4"}));
    EXPECT_EQ(Refused({L"list", L"-x"}), (UsageProblem{L"Usage/UnknownArgument", L"-x"}));
}

TEST(ParserTest, AnOptionWithoutEffectIsRefused) {
    for (const auto& [arguments, option] :
         std::vector<std::pair<Arguments, std::wstring>>{{{L"list", L"--no-reuse"}, L"--no-reuse"},
                                                         {{L"list", L"--output", L"o"}, L"--output"},
                                                         {{L"list", L"--need", L"a=1"}, L"--need"},
                                                         {{L"wait", L"1", L"--argument", L"a"}, L"--argument"},
                                                         {{L"hold", L"1", L"--priority", L"1"}, L"--priority"},
                                                         {{L"edit", L"1", L"--after", L"2"}, L"--after"},
                                                         {{L"watch", L"--follow"}, L"--follow"}}) {
        EXPECT_EQ(Refused(arguments).argument, option);
    }
}

TEST(ParserTest, AMissingValueIsTheOptionsMistake) {
    EXPECT_EQ(Refused({L"list", L"--limit"}), (UsageProblem{L"Usage/WrongValue", L"--limit"}));
    EXPECT_EQ(Refused({L"run", L"r.rb", L"a", L"--output"}), (UsageProblem{L"Usage/WrongValue", L"--output"}));
    EXPECT_EQ(Refused({L"list", L"-n"}), (UsageProblem{L"Usage/WrongValue", L"--limit"}));
    EXPECT_EQ(Refused({L"list", L"-an"}), (UsageProblem{L"Usage/WrongValue", L"--limit"}));
    EXPECT_EQ(Refused({L"list", L"--limit="}), (UsageProblem{L"Usage/WrongValue", L"--limit"}));
    EXPECT_EQ(Refused({L"log", L"--attempt", L"--", L"3"}), (UsageProblem{L"Usage/WrongValue", L"--attempt"}));
    EXPECT_EQ(Refused({L"list", L"a=", L"--limit"}), (UsageProblem{L"Usage/WrongValue", L"--limit"}));
    EXPECT_EQ(Refused({L"--color"}), (UsageProblem{L"Usage/WrongValue", L"--color"}));
    EXPECT_EQ(Refused({L"list", L"--color", L"pink"}), (UsageProblem{L"Usage/Colours", L"pink"}));
    EXPECT_EQ(Refused({L"run", L"a.rb", L"b", L"--reuse", L"--no-reuse"}),
              (UsageProblem{L"Usage/IdleOption", L"--reuse"}));
}

TEST(ParserTest, TheUsageNamesTheOperands) {
    const auto usage = [](const Arguments& arguments) {
        const std::wstring help = front_end::ParseSubcommand(BuiltInTexts(), arguments).help;
        const std::size_t begin = help.find(L"Usage: ");
        return help.substr(begin, help.find(L'\n', begin) - begin);
    };
    EXPECT_EQ(usage({L"--help"}), L"Usage: cadjobs [OPTIONS] [COMMAND]");
    EXPECT_EQ(usage({L"run", L"--help"}), L"Usage: cadjobs run [OPTIONS] SCENARIO INPUT...");
    EXPECT_EQ(usage({L"check", L"--help"}), L"Usage: cadjobs check [OPTIONS] SCENARIO [INPUT...]");
    EXPECT_EQ(usage({L"list", L"--help"}), L"Usage: cadjobs list [OPTIONS] [JOB...]");
    EXPECT_EQ(usage({L"settings", L"check", L"--help"}), L"Usage: cadjobs settings check [OPTIONS] [FILE]");
    EXPECT_EQ(usage({L"log", L"-h"}), L"Usage: cadjobs log [OPTIONS] JOB");
    EXPECT_EQ(usage({L"pause", L"-h"}), L"Usage: cadjobs pause [OPTIONS]");
}

TEST(ParserTest, HelpIsGivenWhateverElseIsMissing) {
    for (const Arguments& arguments :
         {Arguments{L"wait", L"--help"}, Arguments{L"run", L"r.rb", L"--help", L"--list"}, Arguments{L"lost", L"-h"}}) {
        EXPECT_EQ(Parsed(arguments).kind, CommandKind::Help);
    }
}

TEST(ParserTest, HelpIsThatOfTheSubcommand) {
    const auto all = front_end::ParseSubcommand(BuiltInTexts(), {L"--help"});
    EXPECT_EQ(all.command.kind, CommandKind::Help);
    EXPECT_NE(all.help.find(L"Usage: cadjobs"), std::wstring::npos);
    const auto list = front_end::ParseSubcommand(BuiltInTexts(), {L"list", L"--help"});
    EXPECT_NE(list.help.find(L"--group-by COLUMN"), std::wstring::npos);
    EXPECT_NE(list.help.find(L"\nUsage: cadjobs list [OPTIONS] [JOB...]\n"), std::wstring::npos);
    EXPECT_EQ(list.help.find(L"--need"), std::wstring::npos);
}

} // namespace

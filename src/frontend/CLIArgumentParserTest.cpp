#include "CommonControllerLib/CLIArgumentParser.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

/// The result of parsing one list of arguments.
struct Outcome {
    bool isParsed = false;
    CLIArgumentParser::CommandType command = CLIArgumentParser::None;
    std::wstring jobFile = {};
    Texts ids = {};
    std::wstring logFile = {};
    std::wstring outputFile = {};
    bool isClient = false;
    bool isServer = false;

    bool operator==(const Outcome&) const = default;
};

Outcome OutcomeOf(CLIArgumentParser& parser, const Texts& arguments) {
    Outcome outcome;
    outcome.isParsed = parser.Parse(arguments);
    outcome.command = parser.GetCommandType();
    outcome.jobFile = parser.GetJobFileName();
    outcome.ids = parser.GetIds();
    outcome.logFile = parser.GetLogFileName();
    outcome.outputFile = parser.GetOutputFileName();
    outcome.isClient = parser.IsForceClientMode();
    outcome.isServer = parser.IsForceServerMode();
    return outcome;
}

Outcome Parsed(const Texts& arguments) {
    CLIArgumentParser parser;
    return OutcomeOf(parser, arguments);
}

Outcome Enqueue(const std::wstring& jobFile) {
    return {.isParsed = true, .command = CLIArgumentParser::EnqueueJobs, .jobFile = jobFile};
}

Outcome Cancel(const Texts& ids) {
    return {.isParsed = true, .command = CLIArgumentParser::CancelJobs, .ids = ids};
}

Outcome Status(const Texts& ids) {
    return {.isParsed = true, .command = CLIArgumentParser::CheckJobStatus, .ids = ids};
}

struct Row {
    const char* says;
    Texts arguments;
    Outcome outcome;
};

std::ostream& operator<<(std::ostream& stream, const Row& row) {
    return stream << row.says;
}

class CLIArgumentParserTest_List : public testing::TestWithParam<Row> {};

TEST_P(CLIArgumentParserTest_List, GivesTheExpectedCommand) {
    EXPECT_TRUE(Parsed(GetParam().arguments) == GetParam().outcome) << GetParam().says;
}

Outcome With(Outcome outcome, std::wstring Outcome::*member, const std::wstring& text) {
    outcome.*member = text;
    return outcome;
}

Outcome With(Outcome outcome, bool Outcome::*member) {
    outcome.*member = true;
    return outcome;
}

Outcome Refused(Outcome outcome) {
    outcome.isParsed = false;
    return outcome;
}

const std::vector<Row> accepted = {
    {"a plain argument is the jobs file", {L"jobs.json"}, Enqueue(L"jobs.json")},
    {"double quotes around a file name go", {L"\"my jobs.json\""}, Enqueue(L"my jobs.json")},
    {"single quotes around a file name go", {L"'my jobs.json'"}, Enqueue(L"my jobs.json")},
    {"only one pair of quotes goes", {L"\"'a.json'\""}, Enqueue(L"'a.json'")},
    {"quotes of two kinds stay", {L"\"a.json'"}, Enqueue(L"\"a.json'")},
    {"two quotes alone are an empty name", {L"\"\""}, Enqueue(L"")},
    {"one quote alone is a name", {L"\""}, Enqueue(L"\"")},
    {"i names the jobs file", {L"-i", L"jobs.json"}, Enqueue(L"jobs.json")},
    {"i with its value attached", {L"-i\"my jobs.json\""}, Enqueue(L"my jobs.json")},
    {"i without a file", {L"-i"}, Enqueue(L"")},
    {"a slash begins an option", {L"/s7"}, Status({L"7"})},
    {"ids attached to the option", {L"/c1,2"}, Cancel({L"1", L"2"})},
    {"ids behind the option, then an output file",
     {L"-c", L"3,5", L"-o", L"out.txt"},
     With(Cancel({L"3", L"5"}), &Outcome::outputFile, L"out.txt")},
    {"empty ids are dropped", {L"-s1,,2,"}, Status({L"1", L"2"})},
    {"ids are not trimmed", {L"-s", L" 1, 2"}, Status({L" 1", L" 2"})},
    {"quotes around ids stay", {L"-c\"1,2\""}, Cancel({L"\"1", L"2\""})},
    {"an option is not taken as the ids", {L"-c", L"-o", L"x"}, With(Cancel({}), &Outcome::outputFile, L"x")},
    {"c without ids is still a command", {L"-c"}, Cancel({})},
    {"an unknown option is not taken as the ids and ignored", {L"-s", L"-x", L"-l"}, Status({})},
    {"an empty argument is not taken as a value", {L"-s", L"", L"-l"}, Status({})},
    {"the last log file wins", {L"-la", L"-l", L"b", L"j"}, With(Enqueue(L"j"), &Outcome::logFile, L"b")},
    {"the last output file wins", {L"-oa", L"-o", L"'b'", L"j"}, With(Enqueue(L"j"), &Outcome::outputFile, L"b")},
    {"f forces the client", {L"-i", L"j", L"-f"}, With(Enqueue(L"j"), &Outcome::isClient)},
    {"m forces the server", {L"/m", L"-s1"}, With(Status({L"1"}), &Outcome::isServer)},
    {"a flag's attached value is ignored", {L"-fyes", L"j"}, With(Enqueue(L"j"), &Outcome::isClient)},
    {"a flag takes a plain argument and ignores it", {L"-f", L"no", L"j"}, With(Enqueue(L"j"), &Outcome::isClient)},
    {"unknown options and empty arguments are ignored", {L"-x", L"-", L"/", L"", L"j"}, Enqueue(L"j")},
    {"a path with slashes after the first character is plain", {L"C:/jobs.json"}, Enqueue(L"C:/jobs.json")},
};

const std::vector<Row> refused = {
    {"no argument at all", {}, {}},
    {"a second command after cancel", {L"-c1", L"-s2"}, Refused(Cancel({L"1"}))},
    {"a second jobs file", {L"a.json", L"b.json"}, Refused(Enqueue(L"a.json"))},
    {"i after a plain argument", {L"a.json", L"-i", L"b.json"}, Refused(Enqueue(L"a.json"))},
    {"what follows a second command is not read", {L"a", L"-s1", L"-ox"}, Refused(Enqueue(L"a"))},
    {"a log file alone", {L"-l", L"run.log"}, With({}, &Outcome::logFile, L"run.log")},
    {"a flag swallows the jobs file", {L"-f", L"jobs.json"}, With({}, &Outcome::isClient)},
    {"m swallows the jobs file too", {L"-m", L"jobs.json"}, With({}, &Outcome::isServer)},
    {"upper case is no option", {L"-C1"}, {}},
    {"a lone dash", {L"-"}, {}},
    {"an empty argument", {L""}, {}},
    {"a letter beyond ASCII",
     {L"-\x00E7"
      L"1"},
     {}},
};

INSTANTIATE_TEST_SUITE_P(Accepted, CLIArgumentParserTest_List, testing::ValuesIn(accepted));
INSTANTIATE_TEST_SUITE_P(Refused, CLIArgumentParserTest_List, testing::ValuesIn(refused));

TEST(CLIArgumentParserTest, SaysNothingBeforeParsing) {
    CLIArgumentParser parser;
    EXPECT_EQ(parser.GetCommandType(), CLIArgumentParser::None);
    EXPECT_TRUE(parser.GetJobFileName().empty());
    EXPECT_TRUE(parser.GetIds().empty());
    EXPECT_TRUE(parser.GetLogFileName().empty());
    EXPECT_TRUE(parser.GetOutputFileName().empty());
    EXPECT_FALSE(parser.IsForceClientMode());
    EXPECT_FALSE(parser.IsForceServerMode());
}

TEST(CLIArgumentParserTest, HasNoJobFileAfterCancel) {
    EXPECT_TRUE(Parsed({L"-c1"}).jobFile.empty());
}

TEST(CLIArgumentParserTest, HasNoIdsAfterAJobsFile) {
    EXPECT_TRUE(Parsed({L"a.json"}).ids.empty());
}

TEST(CLIArgumentParserTest, RefusesASecondCommandInASecondListToo) {
    CLIArgumentParser parser;
    EXPECT_TRUE(parser.Parse({L"a.json"}));
    EXPECT_FALSE(parser.Parse({L"-s1"}));
    EXPECT_EQ(parser.GetJobFileName(), L"a.json");
}

TEST(CLIArgumentParserTest, RefusesAnEmptyListAfterACommand) {
    CLIArgumentParser parser;
    EXPECT_TRUE(parser.Parse({L"a.json"}));
    EXPECT_FALSE(parser.Parse({}));
}

TEST(CLIArgumentParserTest, NumbersItsCommands) {
    EXPECT_EQ(static_cast<int>(CLIArgumentParser::None), -1);
    EXPECT_EQ(static_cast<int>(CLIArgumentParser::EnqueueJobs), 0);
    EXPECT_EQ(static_cast<int>(CLIArgumentParser::CancelJobs), 1);
    EXPECT_EQ(static_cast<int>(CLIArgumentParser::CheckJobStatus), 2);
}

} // namespace

#include "controller_cli/command_line/LongOptions.h"

#include <gtest/gtest.h>

namespace front_end {

static void PrintTo(const UsageProblem& problem, std::ostream* out) {
    *out << std::string(problem.textKey.begin(), problem.textKey.end()) << " "
         << std::string(problem.argument.begin(), problem.argument.end());
}

} // namespace front_end

namespace {

using namespace front_end;
using Arguments = std::vector<std::wstring>;

TEST(LongOptionsTest, Accepted) {
    using Kind = CommandKind;
    const std::vector<std::pair<Arguments, Command>> table = {
        {{L"--help"}, {.kind = Kind::Help}},
        {{L"--version"}, {.kind = Kind::Version}},
        {{L"--list"}, {.kind = Kind::List}},
        {{L"--list", L"--json"}, {.kind = Kind::List, .asJson = true}},
        {{L"-f", L"--list"}, {.kind = Kind::List, .clientOnly = true}},
        {{L"--list", L"-l", L"/x/a.log"}, {.kind = Kind::List, .logFile = L"/x/a.log"}},
        {{L"--watch"}, {.kind = Kind::Watch}},
        {{L"--run", L"r.rb", L"a.stl"}, {.kind = Kind::Run, .scenario = L"r.rb", .inputs = {L"a.stl"}}},
        {{L"--run", L"/s/r.rb", L"/a.stl", L"C:\\b.stl", L"--output", L"/o", L"--argument", L"x=1 y=2", L"--json"},
         {.kind = Kind::Run,
          .scenario = L"/s/r.rb",
          .inputs = {L"/a.stl", L"C:\\b.stl"},
          .outputFolder = L"/o",
          .runArgument = L"x=1 y=2",
          .asJson = true}},
        {{L"--output=o", L"--run", L"\xe4.rb", L"\xdf.stl"},
         {.kind = Kind::Run, .scenario = L"\xe4.rb", .inputs = {L"\xdf.stl"}, .outputFolder = L"o"}},
        {{L"--wait", L"1,,2,"}, {.kind = Kind::Wait, .ids = {L"1", L"2"}}},
        {{L"--wait=3f9a0c1"}, {.kind = Kind::Wait, .ids = {L"3f9a0c1"}}},
        {{L"--cancel", L"3"}, {.kind = Kind::Cancel, .ids = {L"3"}}},
        {{L"--wait", L" 1, 2 ,\t3,,"}, {.kind = Kind::Wait, .ids = {L"1", L"2", L"3"}}},
        {{L"--log", L" 3 "}, {.kind = Kind::Log, .ids = {L"3"}}},
        {{L"--wait", L"--help"}, {.kind = Kind::Help}},
        {{L"--run", L"r.rb", L"--help", L"--list"}, {.kind = Kind::Help}},
        {{L"jobs.json", L"--help"}, {.kind = Kind::Help}},
        {{L"--run", L"r.rb", L"a", L"--", L"-b", L"--help", L"--"},
         {.kind = Kind::Run, .scenario = L"r.rb", .inputs = {L"a", L"-b", L"--help", L"--"}}},
        {{L"--run", L"--json", L"--", L"-r.rb", L"-a"},
         {.kind = Kind::Run, .scenario = L"-r.rb", .inputs = {L"-a"}, .asJson = true}},
        {{L"--output", L"o", L"--run", L"--", L"r.rb", L"a"},
         {.kind = Kind::Run, .scenario = L"r.rb", .inputs = {L"a"}, .outputFolder = L"o"}},
        {{L"--wait", L"--", L"3"}, {.kind = Kind::Wait, .ids = {L"3"}}},
        {{L"--list", L"--"}, {.kind = Kind::List}},
        {{L"--cancel-all"}, {.kind = Kind::CancelAll}},
        {{L"--delete", L"3,4"}, {.kind = Kind::Delete, .ids = {L"3", L"4"}}},
        {{L"--log", L"3", L"--follow"}, {.kind = Kind::Log, .ids = {L"3"}, .follows = true}},
        {{L"--scenarios"}, {.kind = Kind::Scenarios}},
        {{L"--parameter-sets", L"1742"}, {.kind = Kind::ParameterSets, .ids = {L"1742"}}},
        {{L"--stop-host"}, {.kind = Kind::StopHost}},
        {{L"--run", L"r.rb", L"a", L"--priority", L"-5", L"--not-before", L"2h", L"--after", L"1,2", L"--after-end=3",
          L"--need", L"cad=1", L"--need", L"memory=9", L"--skip-if-after-fails", L"--on-hold"},
         {.kind = Kind::Run,
          .scenario = L"r.rb",
          .inputs = {L"a"},
          .priority = L"-5",
          .notBefore = L"2h",
          .after = {L"1", L"2"},
          .afterEnd = {L"3"},
          .needs = {L"cad=1", L"memory=9"},
          .skipsIfAfterFails = true,
          .isOnHold = true}},
        {{L"--run", L"r.rb", L"a", L"--retries", L"2", L"--retry-delay", L"30s", L"--retry-backoff",
          L"--retry-only-after-crash", L"--time-limit", L"2h", L"--silence-limit=10m", L"--memory-limit", L"4000",
          L"--cpu-limit", L"150"},
         {.kind = Kind::Run,
          .scenario = L"r.rb",
          .inputs = {L"a"},
          .retries = L"2",
          .retryDelay = L"30s",
          .timeLimit = L"2h",
          .silenceLimit = L"10m",
          .memoryLimit = L"4000",
          .cpuLimit = L"150",
          .retriesWithBackoff = true,
          .retriesOnlyAfterCrash = true}},
        {{L"--edit", L"3,4", L"--priority", L"7"}, {.kind = Kind::Edit, .ids = {L"3", L"4"}, .priority = L"7"}},
        {{L"--run", L"r.rb", L"a", L"--reuse"},
         {.kind = Kind::Run, .scenario = L"r.rb", .inputs = {L"a"}, .reuse = true}},
        {{L"--run", L"r.rb", L"a", L"--no-reuse"},
         {.kind = Kind::Run, .scenario = L"r.rb", .inputs = {L"a"}, .reuse = false}},
        {{L"--hold", L"3"}, {.kind = Kind::Hold, .ids = {L"3"}}},
        {{L"--release", L"3"}, {.kind = Kind::Release, .ids = {L"3"}}},
        {{L"--list", L"--jobs", L"3,4"}, {.kind = Kind::List, .ids = {L"3", L"4"}}},
        {{L"--again", L"3,4"}, {.kind = Kind::Again, .ids = {L"3", L"4"}}},
        {{L"--clean", L"--older-than", L"7d", L"--state", L"Failed,Canceled", L"--dry-run"},
         {.kind = Kind::Clean, .olderThan = L"7d", .states = {L"Failed", L"Canceled"}, .isDryRun = true}},
        {{L"--pause"}, {.kind = Kind::Pause}},
        {{L"--resume"}, {.kind = Kind::Resume}},
    };
    for (const auto& [arguments, expected] : table) {
        EXPECT_EQ(ParseLongCommand(arguments), expected) << std::string(arguments[0].begin(), arguments[0].end());
    }
}

TEST(LongOptionsTest, Refused) {
    const std::vector<std::pair<Arguments, UsageProblem>> table = {
        {{L"--lost"}, {L"Usage/UnknownArgument", L"--lost"}},
        {{L"--list", L"extra"}, {L"Usage/UnknownArgument", L"extra"}},
        {{L"--list", L"-x"}, {L"Usage/UnknownArgument", L"-x"}},
        {{L"--json"}, {L"Usage/NoCommand", L""}},
        {{L"--list", L"--watch"}, {L"Usage/TwoCommands", L"--watch"}},
        {{L"--wait", L"1", L"--list"}, {L"Usage/TwoCommands", L"--wait"}},
        {{L"--wait"}, {L"Usage/WrongValue", L"--wait"}},
        {{L"--wait", L"1", L"--wait", L"2"}, {L"Usage/WrongValue", L"--wait"}},
        {{L"--wait", L","}, {L"Usage/ValueMissing", L"--wait"}},
        {{L"--log", L""}, {L"Usage/ValueMissing", L"--log"}},
        {{L"--log", L"  "}, {L"Usage/ValueMissing", L"--log"}},
        {{L"--wait", L" , "}, {L"Usage/ValueMissing", L"--wait"}},
        {{L"--wait", L"1", L"--", L"2"}, {L"Usage/WrongValue", L"--wait"}},
        {{L"--list", L"--", L"a"}, {L"Usage/UnknownArgument", L"a"}},
        {{L"--run", L"--"}, {L"Usage/WrongValue", L"--run"}},
        {{L"--run", L"--", L"r.rb"}, {L"Usage/NoInputs", L"--run"}},
        {{L"--run"}, {L"Usage/WrongValue", L"--run"}},
        {{L"--run", L"r.rb"}, {L"Usage/NoInputs", L"--run"}},
        {{L"--run", L"r.rb", L"a", L"--output"}, {L"Usage/WrongValue", L"--output"}},
        {{L"--cancel", L"1", L"--json"}, {L"Usage/IdleOption", L"--json"}},
        {{L"--list", L"--no-reuse"}, {L"Usage/IdleOption", L"--no-reuse"}},
        {{L"--run", L"r.rb", L"a", L"--reuse", L"--no-reuse"}, {L"Usage/IdleOption", L"--reuse"}},
        {{L"--log", L"1", L"--json"}, {L"Usage/IdleOption", L"--json"}},
        {{L"--list", L"--follow"}, {L"Usage/IdleOption", L"--follow"}},
        {{L"--list", L"--output", L"o"}, {L"Usage/IdleOption", L"--output"}},
        {{L"--wait", L"1", L"--argument", L"a"}, {L"Usage/IdleOption", L"--argument"}},
        {{L"--hold", L"1", L"--priority", L"1"}, {L"Usage/IdleOption", L"--priority"}},
        {{L"--edit", L"1", L"--after", L"2"}, {L"Usage/IdleOption", L"--after"}},
        {{L"--list", L"--need", L"a=1"}, {L"Usage/IdleOption", L"--need"}},
        {{L"--pause", L"1"}, {L"Usage/UnknownArgument", L"1"}},
    };
    for (const auto& [arguments, expected] : table) {
        try {
            ParseLongCommand(arguments);
            ADD_FAILURE() << std::string(arguments[0].begin(), arguments[0].end()) << " is accepted";
        } catch (const UsageProblem& problem) {
            EXPECT_EQ(problem, expected);
        }
    }
}

TEST(LongOptionsTest, OneLongOptionMakesALongOptions) {
    EXPECT_TRUE(HasLongOptions({L"-f", L"--list"}));
    EXPECT_FALSE(HasLongOptions({L"-f", L"-l", L"a--b", L"jobs.json"}));
    EXPECT_FALSE(HasLongOptions({}));
    EXPECT_FALSE(HasLongOptions({L"-f", L"--", L"--list"}));
}

} // namespace

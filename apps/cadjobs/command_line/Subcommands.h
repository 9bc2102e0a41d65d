#pragma once

#include "front_end/commands/Command.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The command line of `cadjobs` as data: the parser, the help and the completion are made from it. Its descriptions
/// are texts: "Subcommands/host-start", "Options/json".
namespace front_end {

/// What a value may be.
enum class ValueKind : std::int32_t {
    /// No value.
    Flag,
    Text,
    Jobs,
    States,
    Scenario,
    /// The argument of a scenario: the id of one of its parameter sets.
    Parameter,
    File,
    Directory,
    Duration,
    Time,
    Number,
    Column,
    SortColumn,
    GroupColumn,
    ColourChoice,
    Shell,
    Language
};

/// How a value is named in the help: "DURATION".
const char* NameOfValue(ValueKind kind);

using Values = std::vector<std::wstring>;

struct OptionSpec {
    /// "-f,--client-only"
    const char* names;
    ValueKind kind;
    /// Takes the values as typed, one for each time that the option is given.
    void (*take)(Command& command, const Values& values);

    /// "--client-only"
    std::string LongName() const;
};

struct OperandSpec {
    /// A word for each operand: "SCENARIO INPUT". Empty: there are none.
    const char* name = "";
    ValueKind kind = ValueKind::Text;
    std::size_t least = 0;
    std::size_t most = 0;
    void (*take)(Command& command, const Values& values) = nullptr;

    std::vector<std::string> Words() const;
};

struct SubcommandSpec {
    /// "list"; "host start" is a subcommand of a subcommand.
    const char* name;
    /// The key of the text over its group in the help; empty: it is not in the help.
    const char* group;
    CommandKind kind;
    OperandSpec operand;
    /// By their long names.
    std::vector<const char*> options;

    /// True if at least one job must be named, or conditions be given where the subcommand has them.
    bool NeedsJobs() const { return operand.kind == ValueKind::Jobs && operand.least > 0; }

    /// True for what is made for programs, not for people.
    bool IsHidden() const { return *group == '\0'; }

    /// The key of its text: "host-start".
    std::wstring Key() const;
};

const std::vector<SubcommandSpec>& Subcommands();

/// The option with this long name, which must exist.
const OptionSpec& OptionNamed(const std::string& longName);

} // namespace front_end

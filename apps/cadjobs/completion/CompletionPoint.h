#pragma once

#include "cadjobs/command_line/Subcommands.h"

#include <string>
#include <vector>

namespace front_end {

/// What stands at the end of an unfinished command line.
struct CompletionPoint {
    enum class Place { Subcommand, Option, OptionValue, Operand };

    Place place = Place::Subcommand;
    /// Null: not named yet.
    const SubcommandSpec* subcommand = nullptr;
    /// The first word of a subcommand of two ("host"), whose second one is missing; empty otherwise.
    std::wstring group = {};
    /// Of the option or operand.
    ValueKind kind = ValueKind::Text;
    /// The operands before.
    std::vector<std::wstring> operands = {};
    /// The beginning of the last word that stays as it is: "--state=", "3,".
    std::wstring kept = {};
    /// What has been typed of the value itself.
    std::wstring typed = {};

    /// The options that may stand here, by their long names.
    const std::vector<const char*>& Options() const;
};

/// `words` follow the name of the program; the last one is unfinished. A lone "=" separates an option from its value,
/// as bash splits words, or stands for an empty last word.
CompletionPoint PointIn(std::vector<std::wstring> words);

} // namespace front_end

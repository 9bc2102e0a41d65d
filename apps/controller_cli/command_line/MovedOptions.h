#pragma once

#include <optional>
#include <string>
#include <vector>

namespace front_end {

/// A long option that earlier versions had.
struct MovedOption {
    /// "--list"
    std::wstring option;
    /// What to type instead: "cadjobs list".
    std::wstring replacement;
};

/// All of them, those that were commands first.
const std::vector<MovedOption>& MovedOptions();

/// The first of these options in the order of `MovedOptions`, also with an attached value ("--list=3"). `options` are
/// the arguments before "--".
std::optional<MovedOption> FindMovedOption(const std::vector<std::wstring>& options);

} // namespace front_end

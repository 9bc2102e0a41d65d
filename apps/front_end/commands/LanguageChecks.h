#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/output/StateJson.h"
#include "services/Settings.h"

#include <string>
#include <vector>

namespace front_end::commands {

/// Appends the results for one language file: a result for each kind of problem in each of its cultures, with the names
/// of all texts, or that all is well.
void CheckLanguageFileTexts(const CommandContext& context, const std::wstring& path, std::vector<CheckResult>& results);

/// Appends the results named "language" for the culture and the default culture of `settings`, with the names of the
/// first texts of each problem.
void CheckLanguagesInUse(const CommandContext& context, const settings::Settings& settings,
                         std::vector<CheckResult>& results);

} // namespace front_end::commands

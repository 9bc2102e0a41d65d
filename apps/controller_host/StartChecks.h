#pragma once

#include <string>
#include <vector>

#include "CommonControllerLib/FunctionManager.h"
#include "services/Settings.h"

/// What a host looks at when it starts, so that people learn then what its jobs would fail for. Each problem is a
/// sentence for people, with the system's own words and the setting to check.
namespace start_checks {

/// Makes the libraries that the modules of the settings need findable. Before any module is loaded.
void ProvideModuleLibraries(const settings::Settings& settings);

/// Why the event transmitter of the settings gives none, or none that front ends can reach.
std::wstring TransmitterProblem(const settings::Settings& settings);

/// Loads the function modules of the settings. What is wrong with them.
std::vector<std::wstring> LoadFunctionModules(const settings::Settings& settings, FunctionManager& functions);

/// What is wrong with the programs that the settings name: the runner and the interpreters.
std::vector<std::wstring> ProgramProblems(const settings::Settings& settings);

/// All but the transmitter's, for a process that is no host itself.
std::vector<std::wstring> Problems(const settings::Settings& settings);

} // namespace start_checks

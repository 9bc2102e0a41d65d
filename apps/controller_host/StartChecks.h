#pragma once

#include <string>
#include <vector>

#include "CommonControllerLib/FunctionManager.h"
#include "services/Settings.h"

/// Checks at the start of a host, which report problems that would make its jobs fail. Each problem is a sentence for
/// people, with the system's error text and the setting to check.
namespace start_checks {

/// Makes the libraries that the configured modules need loadable. Called before any module is loaded.
void ProvideModuleLibraries(const settings::Settings& settings);

/// Why the configured event transmitter is missing, or cannot be reached by front ends.
std::wstring TransmitterProblem(const settings::Settings& settings);

/// Loads the configured function modules and returns their problems.
std::vector<std::wstring> LoadFunctionModules(const settings::Settings& settings, FunctionManager& functions);

/// Problems of the configured programs: the runner and the interpreters.
std::vector<std::wstring> ProgramProblems(const settings::Settings& settings);

/// All problems except those of the transmitter, for a process that is not a host.
std::vector<std::wstring> Problems(const settings::Settings& settings);

} // namespace start_checks

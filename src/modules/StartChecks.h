#pragma once

#include <string>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/FunctionManager.h"
#include "services/Settings.h"

/// Checks of what a host needs, which report problems that would make its jobs fail. Each problem is a sentence for
/// people, with the system's error text and the setting to check.
namespace start_checks {

/// Makes the libraries that the configured modules need loadable. Called before any module is loaded.
CONTROLLER_API void ProvideModuleLibraries(const settings::Settings& settings);

/// Why the configured event transmitter is missing, or cannot be reached by front ends.
CONTROLLER_API std::wstring TransmitterProblem(const settings::Settings& settings);

/// Loads the configured function modules and returns their problems.
CONTROLLER_API std::vector<std::wstring> LoadFunctionModules(const settings::Settings& settings,
                                                             FunctionManager& functions);

/// Problems of the configured programs: the runner and the interpreters.
CONTROLLER_API std::vector<std::wstring> ProgramProblems(const settings::Settings& settings);

/// All problems except those of the transmitter, for a process that is not a host.
CONTROLLER_API std::vector<std::wstring> Problems(const settings::Settings& settings);

} // namespace start_checks

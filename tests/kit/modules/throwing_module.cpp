#include "CommonControllerLib/Export.h"

#include <stdexcept>
#include <string>
#include <vector>

/// Serves a function that throws.
extern "C" {

CONTROLLER_API void GetFunctions(std::vector<std::string>* functionNames) {
    functionNames->emplace_back("RunScenario");
}

CONTROLLER_API long CallFunction(const std::string&, const std::wstring&, std::wstring&,
                                 long (*)(const std::wstring&, const std::wstring&)) {
    throw std::runtime_error("no licence");
}

} // extern "C"

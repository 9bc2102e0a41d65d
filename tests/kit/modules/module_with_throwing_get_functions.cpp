#include "CommonControllerLib/Export.h"

#include <stdexcept>
#include <string>
#include <vector>

/// Throws from "GetFunctions", after adding a name.
extern "C" {

CONTROLLER_API void GetFunctions(std::vector<std::string>* functionNames) {
    functionNames->emplace_back("RunScenario");
    throw std::runtime_error("no licence");
}

CONTROLLER_API long CallFunction(const std::string&, const std::wstring&, std::wstring&,
                                 long (*)(const std::wstring&, const std::wstring&)) {
    return 0;
}

} // extern "C"

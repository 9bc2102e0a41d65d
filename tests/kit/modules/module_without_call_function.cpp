#include "CommonControllerLib/Export.h"

#include <string>
#include <vector>

/// Serves a function but has no "CallFunction".
extern "C" CONTROLLER_API void GetFunctions(std::vector<std::string>* functionNames) {
    functionNames->emplace_back("RunScenario");
}

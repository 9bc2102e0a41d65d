#include "CommonControllerLib/Export.h"

#include <string>
#include <vector>

/// Names a function that nobody can call.
extern "C" CONTROLLER_API void GetFunctions(std::vector<std::string>* functionNames) {
    functionNames->emplace_back("RunScenario");
}

#include "CommonControllerLib/Export.h"

#include <string>
#include <vector>

/// Serves no function, though it can be called.
extern "C" {

CONTROLLER_API void GetFunctions(std::vector<std::string>*) {}

CONTROLLER_API long CallFunction(const std::string&, const std::wstring&, std::wstring&,
                                 long (*)(const std::wstring&, const std::wstring&)) {
    return 0;
}

} // extern "C"

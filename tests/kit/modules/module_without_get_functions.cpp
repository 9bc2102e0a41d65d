#include "CommonControllerLib/Export.h"

#include <string>

/// Can be called but has no "GetFunctions".
extern "C" CONTROLLER_API long CallFunction(const std::string&, const std::wstring&, std::wstring&,
                                            long (*)(const std::wstring&, const std::wstring&)) {
    return 0;
}

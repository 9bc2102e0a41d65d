#include "CommonControllerLib/Export.h"

#include <string>

/// Could be called, but does not say what it serves.
extern "C" CONTROLLER_API long CallFunction(const std::string&, const std::wstring&, std::wstring&,
                                            long (*)(const std::wstring&, const std::wstring&)) {
    return 0;
}

#include "engine/OutputDirectoryName.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/VersionSuffix.h"

std::wstring OutputDirectoryName(const std::wstring& firstInputFile) {
    const std::wstring name = ControllerCSWrapper::GetFileNameWithoutExtension(firstInputFile);
    return HasVersionSuffix(firstInputFile) ? ControllerCSWrapper::GetFileNameWithoutExtension(name) : name;
}

#include "engine/OutputFolderName.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/VersionSuffix.h"

std::wstring OutputFolderName(const std::wstring& firstInputFile) {
    const std::wstring name = ControllerCSWrapper::GetFileNameWithoutExtension(firstInputFile);
    return HasVersionSuffix(firstInputFile) ? ControllerCSWrapper::GetFileNameWithoutExtension(name) : name;
}

#include "engine/catalogue/ScenarioFile.h"

#include "CommonControllerLib/PathFuncs.h"

#include <string_view>

namespace {

std::wstring FileName(const ScenarioFile& file, std::wstring_view extension) {
    std::wstring name;
    name.reserve(file.baseName.size() + extension.size());
    return name.append(file.baseName).append(extension);
}

} // namespace

std::wstring FullPath(const ScenarioFile& file) {
    return PathFuncs::Join(file.root, RelativePath(file));
}

std::wstring RelativePath(const ScenarioFile& file) {
    return PathFuncs::Join(file.relativeDirectory, FileName(file, file.extension));
}

std::wstring SettingsPath(const ScenarioFile& file) {
    return PathFuncs::Join(file.root, file.relativeDirectory, FileName(file, L".adc"));
}

std::wstring LabelPrefix(const ScenarioFile& file) {
    return file.label.empty() ? L"" : file.label + L" : ";
}

#include "engine/catalogue/ScenarioFile.h"

#include "CommonControllerLib/PathFuncs.h"

std::wstring FullPath(const ScenarioFile& file) {
    return PathFuncs::Join(file.root, file.relativeDirectory, file.baseName + file.extension);
}

std::wstring RelativePath(const ScenarioFile& file) {
    return PathFuncs::Join(file.relativeDirectory, file.baseName + file.extension);
}

std::wstring SettingsPath(const ScenarioFile& file) {
    return PathFuncs::Join(file.root, file.relativeDirectory, file.baseName + L".adc");
}

std::wstring LabelPrefix(const ScenarioFile& file) {
    return file.label.empty() ? L"" : file.label + L" : ";
}

#include "engine/JobEntry.h"

#include "companion/ControllerCSWrapper.h"
#include "engine/VersionSuffix.h"
#include "platform/FileSystem.h"
#include "support/ControllerLogManager.h"
#include "support/Numbers.h"
#include "support/PathFuncs.h"

namespace {

/// The name of an input file without its extension, and without a version number behind that.
std::wstring FolderName(const std::wstring& inputFile) {
    const std::wstring name = ControllerCSWrapper::GetFileNameWithoutExtension(inputFile);
    return HasVersionSuffix(inputFile) ? ControllerCSWrapper::GetFileNameWithoutExtension(name) : name;
}

std::wstring WithoutTrailingBlanks(std::wstring text) {
    text.erase(text.find_last_not_of(L' ') + 1);
    return text;
}

/// The first of `path`, `path`_1, `path`_2 ... that does not exist.
std::wstring FirstFreePath(const std::wstring& path) {
    std::wstring candidate = path;
    for (std::int32_t i = 1; platform::Exists(candidate); ++i) {
        candidate = path + L"_" + numbers::DecimalText(i);
    }
    return candidate;
}

} // namespace

bool JobEntry::PrepareOutputDir() {
    if (info.inputFiles.empty()) {
        outputFolder = info.outputDir;
        return true;
    }
    const std::wstring folder =
        FirstFreePath(WithoutTrailingBlanks(PathFuncs::Join(info.outputDir, FolderName(info.inputFiles.front()))));
    if (platform::CreateFolder(folder)) {
        ControllerLogManager::ErrorLog(L"Failed to create directory: " + folder + L" for Job: " +
                                       numbers::DecimalText(info.seqId));
        return false;
    }
    outputFolder = folder;
    return true;
}

void JobEntry::SetOutputFolder() {
    if (platform::Exists(outputFolder)) {
        info.outputDir = outputFolder;
    }
}

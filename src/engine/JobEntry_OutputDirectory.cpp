#include "CommonControllerLib/JobEntry.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/PathFuncs.h"
#include "engine/OutputDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Numbers.h"

namespace {

std::wstring WithoutTrailingBlanks(std::wstring text) {
    text.erase(text.find_last_not_of(L' ') + 1);
    return text;
}

} // namespace

bool JobEntry::PrepareOutputDir() {
    if (info.inputFiles.empty()) {
        outputFolder = info.outputDir;
        return true;
    }
    const std::wstring path =
        WithoutTrailingBlanks(PathFuncs::Join(info.outputDir, OutputDirectoryName(info.inputFiles.front())));
    std::wstring directory;
    if (const platform::Error result =
            MakeFreshDirectory(path, {platform::Exists, platform::CreateNewDirectory}, directory);
        !result) {
        failure =
            L"The output directory " + platform::ToNativeText(directory) + L" cannot be made: " + result.Text() + L".";
        ControllerLogManager::ErrorLog(L"Failed to create directory: " + directory + L" for Job: " +
                                       numbers::DecimalText(info.seqId));
        return false;
    }
    outputFolder = directory;
    return true;
}

void JobEntry::SetOutputFolder() {
    if (platform::Exists(outputFolder)) {
        info.outputDir = outputFolder;
    }
}

#include "CommonControllerLib/JobEntry.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/PathFuncs.h"
#include "engine/FreshFolder.h"
#include "engine/OutputFolderName.h"
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
        WithoutTrailingBlanks(PathFuncs::Join(info.outputDir, OutputFolderName(info.inputFiles.front())));
    std::wstring folder;
    if (const platform::Error error = MakeFreshFolder(path, {platform::Exists, platform::CreateFolder}, folder)) {
        failure =
            L"The output directory " + platform::ToNativeText(folder) + L" cannot be made: " + error.Text() + L".";
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

#include "services/SettingsExposure.h"

#include <algorithm>
#include <iterator>

#include "platform/files/FileSystem.h"

namespace settings {

std::vector<std::wstring> ExposedFiles(const Settings& settings) {
    std::vector<std::wstring> files{settings.file, settings.eventTransmitter, settings.scenarioRunner};
    files.insert(files.end(), settings.functionModules.begin(), settings.functionModules.end());
    files.insert(files.end(), settings.libraryDirectories.begin(), settings.libraryDirectories.end());
    std::vector<std::wstring> exposed;
    std::copy_if(files.begin(), files.end(), std::back_inserter(exposed), platform::IsWorldWritable);
    return exposed;
}

} // namespace settings

#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include "formats/Boundary.h"
#include "services/Settings.h"

std::wstring ControllerCSWrapper::GetWorkDirectory() {
    return boundary::Guard("GetWorkDirectory", [] { return settings::Current()->workDirectory; });
}

std::wstring ControllerCSWrapper::GetJobListFile() {
    return boundary::Guard("GetJobListFile", [] { return settings::Current()->jobListFile; });
}

bool ControllerCSWrapper::IsAutoDeleteWorkFolder(int& days) {
    return boundary::Guard("IsAutoDeleteWorkFolder", [&] {
        const settings::AutoDelete autoDelete = settings::Current()->autoDeleteWorkFolder;
        if (autoDelete.enabled) {
            days = autoDelete.days;
        }
        return autoDelete.enabled;
    });
}

std::vector<ScenarioDirectory> ControllerCSWrapper::GetScenarioDirectoryList() {
    return boundary::Guard("GetScenarioDirectoryList", [] { return settings::Current()->scenarioDirectories; });
}

std::wstring ControllerCSWrapper::GetCultureInfo() {
    return boundary::Guard("GetCultureInfo", [] { return settings::Current()->culture; });
}

std::wstring ControllerCSWrapper::GetDefaultCultureInfo() {
    return boundary::Guard("GetDefaultCultureInfo", [] { return settings::Current()->defaultCulture; });
}

#include "services/Settings.h"

#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/NativePath.h"
#include "platform/system/NeverDestroyed.h"
#include "services/SettingsStore.h"
#include "services/log/LogFile.h"

// The settings of this process. Joins them with its log, of which neither the store nor the log file knows.

namespace settings {
namespace {

/// Never destroyed: the log may ask for its path in destructors that run at the end of the process.
SettingsStore& TheStore() {
    static SettingsStore& store = platform::MakeNeverDestroyed<SettingsStore>();
    return store;
}

void Report(const Diagnostics& diagnostics) {
    if (!diagnostics.error.empty()) {
        ControllerCSWrapper::WriteErrorLog(L"The settings are not usable, those from before stay in force: " +
                                           diagnostics.error);
    }
    for (const std::wstring& warning : diagnostics.warnings) {
        ControllerCSWrapper::WriteWarnLog(L"A part of the settings has no effect: " + warning);
    }
    for (const std::wstring& file : diagnostics.exposedFiles) {
        ControllerCSWrapper::WriteWarnLog(
            L"Everybody may change " + platform::ToNativeText(file) +
            L", and so decide what runs in your name: take the right to write from others");
    }
}

/// The log follows the settings before they report to it.
std::shared_ptr<const Settings> PutInForce(std::shared_ptr<const Settings> current, const Diagnostics& diagnostics) {
    log_file::UseSettings(current->logLevel, current->logFile);
    Report(diagnostics);
    return current;
}

} // namespace

void UseFile(const std::wstring& path) {
    TheStore().Use(path);
    log_file::ForgetSettings();
}

std::shared_ptr<const Settings> Current() {
    Diagnostics diagnostics;
    std::shared_ptr<const Settings> current = TheStore().Current(diagnostics);
    return PutInForce(std::move(current), diagnostics);
}

std::shared_ptr<const Settings> FrozenForProcess() {
    Diagnostics diagnostics;
    std::shared_ptr<const Settings> current = TheStore().FrozenForProcess(diagnostics);
    return PutInForce(std::move(current), diagnostics);
}

std::wstring FileInUse() {
    return TheStore().FileInUse();
}

std::wstring Problem() {
    Diagnostics diagnostics;
    std::wstring problem = TheStore().Problem(diagnostics);
    Report(diagnostics);
    return problem;
}

} // namespace settings

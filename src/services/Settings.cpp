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

void Report(const Findings& findings) {
    if (!findings.error.empty()) {
        ControllerCSWrapper::WriteErrorLog(L"The settings are not usable, those from before stay in force: " +
                                           findings.error);
    }
    for (const std::wstring& warning : findings.warnings) {
        ControllerCSWrapper::WriteWarnLog(L"A part of the settings has no effect: " + warning);
    }
    for (const std::wstring& file : findings.exposedFiles) {
        ControllerCSWrapper::WriteWarnLog(
            L"Everybody may change " + platform::ToNativeText(file) +
            L", and so decide what runs in your name: take the right to write from others");
    }
}

/// The log follows the settings before they report to it.
std::shared_ptr<const Settings> PutInForce(std::shared_ptr<const Settings> current, const Findings& findings) {
    log_file::UseSettings(current->logLevel, current->logFile);
    Report(findings);
    return current;
}

} // namespace

void UseFile(const std::wstring& path) {
    TheStore().Use(path);
    log_file::ForgetSettings();
}

std::shared_ptr<const Settings> Current() {
    Findings findings;
    std::shared_ptr<const Settings> current = TheStore().Current(findings);
    return PutInForce(std::move(current), findings);
}

std::shared_ptr<const Settings> FrozenForProcess() {
    Findings findings;
    std::shared_ptr<const Settings> current = TheStore().FrozenForProcess(findings);
    return PutInForce(std::move(current), findings);
}

std::wstring FileInUse() {
    return TheStore().FileInUse();
}

std::wstring Problem() {
    Findings findings;
    std::wstring problem = TheStore().Problem(findings);
    Report(findings);
    return problem;
}

} // namespace settings

#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include "services/Settings.h"
#include "services/log/LogFile.h"

namespace {

/// Settings log their own errors through this function. The recursion ends because the settings are installed before
/// they report.
void FollowSettings() noexcept {
    try {
        log_file::UseDefaultPath(settings::Current()->logFile);
    } catch (...) {
        return; // out of memory: the log file stays as it was
    }
}

void WriteRecord(log_file::Level level, const std::wstring& message) noexcept {
    if (log_file::WantsLevel()) {
        FollowSettings(); // reading the settings also sets the level
    }
    if (!log_file::Takes(level)) {
        return;
    }
    if (log_file::WantsDefaultPath()) {
        FollowSettings();
    }
    log_file::Write(level, message);
}

} // namespace

void ControllerCSWrapper::ChangeLogFilePath(const std::wstring& path) {
    log_file::UsePath(path);
}

void ControllerCSWrapper::WriteInfoLog(const std::wstring& message) {
    WriteRecord(log_file::Level::Info, message);
}

void ControllerCSWrapper::WriteWarnLog(const std::wstring& message) {
    WriteRecord(log_file::Level::Warning, message);
}

void ControllerCSWrapper::WriteErrorLog(const std::wstring& message) {
    WriteRecord(log_file::Level::Error, message);
}

void ControllerCSWrapper::WriteDebugLog(const std::wstring& message) {
    WriteRecord(log_file::Level::Debug, message);
}

#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include "services/Settings.h"
#include "services/log/LogFile.h"

namespace {

/// What the settings find wrong with their file is logged through this function, after the log has got its path and
/// level from them.
void FollowSettings() noexcept {
    try {
        (void)settings::Current();
    } catch (...) {
        return; // out of memory: the log file stays as it was
    }
}

void WriteRecord(log_file::Level level, const std::wstring& message) noexcept {
    if (log_file::WantsSettings()) {
        FollowSettings();
    }
    if (log_file::Takes(level)) {
        log_file::Write(level, message);
    }
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

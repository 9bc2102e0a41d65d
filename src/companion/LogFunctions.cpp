#include "companion/ControllerCSWrapper.h"

#include "companion/log/LogFile.h"

void ControllerCSWrapper::ChangeLogFilePath(const std::wstring& path) {
    log_file::UsePath(path);
}

void ControllerCSWrapper::WriteInfoLog(const std::wstring& message) {
    log_file::Write(log_file::Level::Info, message);
}

void ControllerCSWrapper::WriteWarnLog(const std::wstring& message) {
    log_file::Write(log_file::Level::Warning, message);
}

void ControllerCSWrapper::WriteErrorLog(const std::wstring& message) {
    log_file::Write(log_file::Level::Error, message);
}

void ControllerCSWrapper::WriteDebugLog(const std::wstring& message) {
    log_file::Write(log_file::Level::Debug, message);
}

#pragma once

#include <string>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

/// Captures the log file during its lifetime.
class LogCapture {
public:
    LogCapture() { ControllerCSWrapper::ChangeLogFilePath(path); }
    ~LogCapture() { ControllerCSWrapper::ChangeLogFilePath(L""); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The log so far in UTF-8; empty if there is none.
    std::string Text() const { return platform::Exists(path) ? ReadTextFile(path) : std::string(); }

private:
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"controller.log";
};

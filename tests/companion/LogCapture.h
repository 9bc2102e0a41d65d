#pragma once

#include <string>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "support/TemporaryDirectory.h"

/// Lets a test read what goes to the log file while this lives.
class LogCapture {
public:
    LogCapture() { ControllerCSWrapper::ChangeLogFilePath(path); }
    ~LogCapture() { ControllerCSWrapper::ChangeLogFilePath(L""); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Everything so far, UTF-8; empty when nothing was logged.
    std::string Text() const { return platform::Exists(path) ? ReadTextFile(path) : std::string(); }

private:
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"controller.log";
};

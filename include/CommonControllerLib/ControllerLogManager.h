#pragma once

#include "CommonControllerLib/Export.h"

#include <atomic>
#include <iosfwd>
#include <mutex>
#include <string>

/// The one logging facility of the library. A message goes to the application's log file (written by
/// `ControllerCSWrapper`) and, when attached, to the console (`std::wcout`), each when its level is not above that
/// sink's threshold. The console gets the message as it is: a program whose console is a terminal escapes there what
/// could forge lines or steer it (`platform::PrepareConsole` does).
///
/// Usable at any time and from any thread, `Initialize` included; concurrent console messages may alternate but not
/// mix. A message that is written while the log is set up anew goes to the sinks before or after. Reports no failure.
class CONTROLLER_API ControllerLogManager {
public:
    /// Any value may be met, such as one from a newer front end.
    enum MessageType : int { Debug = 0, Info = 1, Warn = 2, Error = 3 };

    ControllerLogManager(const ControllerLogManager&) = delete;
    ControllerLogManager& operator=(const ControllerLogManager&) = delete;

    /// Sets the log file and both thresholds to `level`. An empty path switches the file off, `toConsole` false the
    /// console. Until the first call the file threshold is the number in the environment variable QRVDBG, or 0.
    static void Initialize(long level, const std::wstring& logFilePath, bool toConsole);

    /// Write one message. Debug messages never reach the console; a value without a name is written as debug to the
    /// file and without a tag to the console.
    static void Log(MessageType type, long level, const std::wstring& message);
    /// Narrow text is read in the current locale; text that is not valid in it is written as an empty message.
    static void Log(MessageType type, long level, const std::string& message);

    // Short-hands with level 0
    static void Log(const std::wstring& message);
    static void Log(const std::string& message);
    static void ErrorLog(const std::wstring& message);
    static void ErrorLog(const std::string& message);
    static void WarnLog(const std::wstring& message);
    static void WarnLog(const std::string& message);
    static void DebugLog(const std::wstring& message);
    static void DebugLog(const std::string& message);

private:
    ControllerLogManager();
    ~ControllerLogManager();

    static ControllerLogManager* GetInstance();
    void SetLogFile(long level, const std::wstring& path);
    void SetConsole(long level, bool attach);
    void Output(MessageType type, long level, const std::wstring& message);
    void WriteToConsole(const std::wstring& line);
    static std::wstring CreateHeaderString(MessageType type);

    // Messages are written without a lock while another thread sets the log up anew.
    std::atomic<std::wostream*> consoleStream = nullptr;
    std::wstring logFilePath;
    std::atomic<long> consoleLevel;
    std::atomic<long> fileLevel;
    /// Held by `Initialize`, which alone uses the path.
    std::mutex settingUp;
};

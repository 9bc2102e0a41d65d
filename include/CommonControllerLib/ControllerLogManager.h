#pragma once

#include "CommonControllerLib/Export.h"

#include <atomic>
#include <iosfwd>
#include <mutex>
#include <string>

/// The logging facility of the library. A message goes to the application's log file (written by `ControllerCSWrapper`)
/// and, if enabled, to the console (`std::wcout`), each if the message's level does not exceed that sink's threshold.
/// The console receives the text unchanged: a program whose console is a terminal must escape characters that could
/// forge lines or control the terminal (`platform::PrepareConsole` does).
///
/// Threads: any, at any time, including `Initialize`. Concurrent console messages may interleave by line but not within
/// a line. A message written during `Initialize` uses either the old or the new configuration. Reports no failure.
class CONTROLLER_API ControllerLogManager {
public:
    /// Values without a name may occur, for example from a newer front end.
    enum MessageType : int { Debug = 0, Info = 1, Warn = 2, Error = 3 };

    ControllerLogManager(const ControllerLogManager&) = delete;
    ControllerLogManager& operator=(const ControllerLogManager&) = delete;

    /// Sets the log file, and both thresholds to `level`. An empty path disables the file; `toConsole` = false disables
    /// the console. Until the first call the file threshold is the number in the environment variable QRVDBG, or 0.
    static void Initialize(long level, const std::wstring& logFilePath, bool toConsole);

    /// Writes one message. Debug messages never reach the console. A type without a name is written as debug to the
    /// file and without a tag to the console.
    static void Log(MessageType type, long level, const std::wstring& message);
    /// Decodes narrow text in the current locale; text that is invalid there is written as an empty message.
    static void Log(MessageType type, long level, const std::string& message);

    // Short-hands with level 0
    /// Writes an information with level 0.
    static void Log(const std::wstring& message);
    /// The same for narrow text.
    static void Log(const std::string& message);
    /// Writes an error with level 0.
    static void ErrorLog(const std::wstring& message);
    /// The same for narrow text.
    static void ErrorLog(const std::string& message);
    /// Writes a warning with level 0.
    static void WarnLog(const std::wstring& message);
    /// The same for narrow text.
    static void WarnLog(const std::string& message);
    /// Writes a debug message with level 0.
    static void DebugLog(const std::wstring& message);
    /// The same for narrow text.
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

    // Atomic: messages are written without a lock while another thread runs `Initialize`.
    std::atomic<std::wostream*> consoleStream = nullptr;
    std::wstring logFilePath;
    std::atomic<long> consoleLevel;
    std::atomic<long> fileLevel;
    /// Held by `Initialize`, the only user of the path.
    std::mutex settingUp;
};

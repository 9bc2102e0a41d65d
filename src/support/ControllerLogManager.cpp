#include "CommonControllerLib/ControllerLogManager.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/system/Environment.h"
#include "text/Numbers.h"

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <syncstream>

namespace {

/// A threshold below every ordinary level.
constexpr long switchedOff = std::numeric_limits<long>::min();

long LevelFromEnvironment() {
    return numbers::ReadInteger(platform::GetEnvironment(L"QRVDBG").value_or(std::wstring()));
}

/// Decodes narrow text, up to its first zero byte, in the current locale. Returns an empty text if it is invalid there.
std::wstring ToWide(const std::string& text) {
    std::wstring wide(text.size() + 1, L'\0');
    const std::size_t length = std::mbstowcs(wide.data(), text.c_str(), wide.size());
    wide.resize(length == static_cast<std::size_t>(-1) ? 0 : length);
    return wide;
}

void WriteToFile(ControllerLogManager::MessageType type, const std::wstring& message) {
    switch (type) {
    case ControllerLogManager::Info:
        return ControllerCSWrapper::WriteInfoLog(message);
    case ControllerLogManager::Warn:
        return ControllerCSWrapper::WriteWarnLog(message);
    case ControllerLogManager::Error:
        return ControllerCSWrapper::WriteErrorLog(message);
    case ControllerLogManager::Debug:
        break;
    }
    ControllerCSWrapper::WriteDebugLog(message);
}

const wchar_t* Tag(ControllerLogManager::MessageType type) {
    switch (type) {
    case ControllerLogManager::Info:
        return L"[INFO]";
    case ControllerLogManager::Warn:
        return L"[WARNING]";
    case ControllerLogManager::Error:
        return L"[ERROR]";
    case ControllerLogManager::Debug:
        break;
    }
    return L"";
}

} // namespace

ControllerLogManager::ControllerLogManager() : consoleLevel(switchedOff), fileLevel(LevelFromEnvironment()) {}

ControllerLogManager::~ControllerLogManager() = default;

ControllerLogManager* ControllerLogManager::GetInstance() {
    static ControllerLogManager instance;
    return &instance;
}

void ControllerLogManager::Initialize(long level, const std::wstring& logFilePath, bool toConsole) {
    ControllerLogManager& log = *GetInstance();
    const std::lock_guard lock(log.settingUp);
    log.SetLogFile(level, logFilePath);
    log.SetConsole(level, toConsole);
}

void ControllerLogManager::SetLogFile(long level, const std::wstring& path) {
    if (path != logFilePath) {
        logFilePath = path;
        if (!path.empty()) {
            ControllerCSWrapper::ChangeLogFilePath(path);
        }
    }
    fileLevel = logFilePath.empty() ? switchedOff : level;
}

void ControllerLogManager::SetConsole(long level, bool attach) {
    std::wostream* const attached = consoleStream.exchange(attach ? &std::wcout : nullptr);
    if (!attach && attached != nullptr) {
        std::wosyncstream(*attached) << std::flush; // a plain flush could split a line that another thread writes
    }
    consoleLevel = attach ? level : switchedOff;
}

void ControllerLogManager::Output(MessageType type, long level, const std::wstring& message) {
    if (level <= fileLevel) {
        WriteToFile(type, message);
    }
    if (type != Debug && level <= consoleLevel) {
        WriteToConsole(CreateHeaderString(type) + message + L"\n");
    }
}

void ControllerLogManager::WriteToConsole(const std::wstring& line) {
    // A message of the lowest level passes the threshold even if the console is disabled.
    std::wostream* const attached = consoleStream;
    if (attached == nullptr) {
        return;
    }
    // Keeps lines of several threads whole, and isolates a failed write (a character that the console cannot show): the
    // state of the console's stream stays good.
    std::wosyncstream(*attached) << line;
}

std::wstring ControllerLogManager::CreateHeaderString(MessageType type) {
    constexpr std::size_t width = 14;
    std::wstring header = Tag(type);
    header.resize(width, L' ');
    return header + L": ";
}

void ControllerLogManager::Log(MessageType type, long level, const std::wstring& message) {
    GetInstance()->Output(type, level, message);
}

void ControllerLogManager::Log(MessageType type, long level, const std::string& message) {
    Log(type, level, ToWide(message));
}

void ControllerLogManager::Log(const std::wstring& message) {
    Log(Info, 0, message);
}

void ControllerLogManager::Log(const std::string& message) {
    Log(Info, 0, message);
}

void ControllerLogManager::ErrorLog(const std::wstring& message) {
    Log(Error, 0, message);
}

void ControllerLogManager::ErrorLog(const std::string& message) {
    Log(Error, 0, message);
}

void ControllerLogManager::WarnLog(const std::wstring& message) {
    Log(Warn, 0, message);
}

void ControllerLogManager::WarnLog(const std::string& message) {
    Log(Warn, 0, message);
}

void ControllerLogManager::DebugLog(const std::wstring& message) {
    Log(Debug, 0, message);
}

void ControllerLogManager::DebugLog(const std::string& message) {
    Log(Debug, 0, message);
}

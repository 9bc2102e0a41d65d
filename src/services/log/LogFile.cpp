#include "services/log/LogFile.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

#include "platform/processes/Process.h"
#include "platform/system/Clock.h"
#include "platform/system/NeverDestroyed.h"
#include "services/log/RotatingFile.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

namespace log_file {
namespace {

using std::chrono::milliseconds;

milliseconds TimeNow() {
    return std::chrono::duration_cast<milliseconds>(std::chrono::system_clock::now().time_since_epoch());
}

std::int64_t SecondsOf(milliseconds time) {
    return std::chrono::duration_cast<std::chrono::seconds>(time).count();
}

/// "2024-03-05T07:08:09.123Z"
std::string TimeText(milliseconds time) {
    std::string text = text::ToUtf8(platform::UtcTimestamp(SecondsOf(time)));
    text.pop_back();
    return text + "." + std::to_string(1000 + time.count() % 1000).substr(1) + "Z";
}

std::string PaddedName(Level level) {
    constexpr std::size_t longestName = 7;
    std::string name = text::ToUtf8(NameOf(level));
    name.resize(longestName, ' ');
    return name;
}

class Log {
public:
    void UsePath(const std::wstring& path) {
        const std::lock_guard lock(mutex);
        pathIsGiven = true;
        file.SetPath(path);
    }

    void UseSettings(Level level, const std::wstring& path) {
        lowestLevel = static_cast<std::int32_t>(level);
        if (!WantsPath()) {
            return;
        }
        const std::lock_guard lock(mutex);
        if (!pathIsGiven) {
            file.SetPath(path);
            lastPath = SecondsOf(TimeNow());
        }
    }

    void ForgetSettings() {
        lowestLevel = unknownLevel;
        lastPath = never;
    }

    bool WantsSettings() const { return lowestLevel == unknownLevel || WantsPath(); }

    bool Takes(Level level) const {
        const std::int32_t lowest = lowestLevel;
        return static_cast<std::int32_t>(level) >=
               (lowest == unknownLevel ? static_cast<std::int32_t>(Level::Info) : lowest);
    }

    void Write(Level level, const std::wstring& message) {
        const std::string rest = PaddedName(level) + " [" + std::to_string(platform::OwnThreadNumber()) + "] " +
                                 text::EscapedUtf8(message) + "\n";
        const std::lock_guard lock(mutex);
        const milliseconds time = TimeNow();
        file.Append(TimeText(time) + " " + rest, SecondsOf(time));
    }

private:
    static constexpr std::int64_t never = -1;
    static constexpr std::int32_t unknownLevel = -1;

    bool WantsPath() const { return !pathIsGiven && lastPath != SecondsOf(TimeNow()); }

    std::mutex mutex;
    RotatingFile file{RotationLimits{}};
    std::atomic<bool> pathIsGiven = false;
    /// The second of the last path from the settings.
    std::atomic<std::int64_t> lastPath = never;
    std::atomic<std::int32_t> lowestLevel = unknownLevel;
};

/// Never destroyed: destructors that run at the end of the process may log.
Log& TheLog() {
    static Log& log = platform::MakeNeverDestroyed<Log>();
    return log;
}

/// Logging ignores exceptions: if there is no memory for a path or a record, the record is dropped.
template <typename Action>
void Quietly(const Action& action) noexcept {
    try {
        action();
    } catch (...) {
        return;
    }
}

} // namespace

void UsePath(const std::wstring& path) noexcept {
    Quietly([&] { TheLog().UsePath(path); });
}

void UseSettings(Level level, const std::wstring& path) noexcept {
    Quietly([&] { TheLog().UseSettings(level, path); });
}

void ForgetSettings() noexcept {
    TheLog().ForgetSettings();
}

bool WantsSettings() noexcept {
    return TheLog().WantsSettings();
}

bool Takes(Level level) noexcept {
    return TheLog().Takes(level);
}

void Write(Level level, const std::wstring& message) noexcept {
    Quietly([&] { TheLog().Write(level, message); });
}

} // namespace log_file

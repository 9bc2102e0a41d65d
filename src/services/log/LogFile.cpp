#include "services/log/LogFile.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <string_view>

#include <spdlog/logger.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/base_sink.h>

#include "platform/system/NeverDestroyed.h"
#include "services/log/RotatingFile.h"
#include "text/EscapeControls.h"

namespace log_file {
namespace {

class RotatingSink final : public spdlog::sinks::base_sink<std::mutex> {
public:
    RotatingSink() : base_sink(RecordFormat()), file(RotationLimits{}) {}

    void SetPath(const std::wstring& path) {
        const std::lock_guard<std::mutex> lock(mutex_);
        pathIsGiven = true;
        file.SetPath(path);
    }

    void SetDefaultPath(const std::wstring& path) {
        const std::lock_guard<std::mutex> lock(mutex_);
        lastDefault = CurrentSecond();
        if (!pathIsGiven) {
            file.SetPath(path);
        }
    }

    bool WantsDefaultPath() const { return !pathIsGiven && lastDefault != CurrentSecond(); }
    void ForgetDefaultPath() { lastDefault = never; }

protected:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t record;
        formatter_->format(message, record);
        const auto time = std::chrono::duration_cast<std::chrono::seconds>(message.time.time_since_epoch());
        file.Append(std::string_view(record.data(), record.size()), time.count());
    }

    /// Nothing to flush: every record is written with a system call of its own.
    void flush_() override {}

private:
    static std::unique_ptr<spdlog::formatter> RecordFormat() {
        return std::make_unique<spdlog::pattern_formatter>("%Y-%m-%dT%H:%M:%S.%eZ %-7l [%t] %v",
                                                           spdlog::pattern_time_type::utc, "\n");
    }

    static std::int64_t CurrentSecond() {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::seconds>(now).count();
    }

    static constexpr std::int64_t never = -1;

    RotatingFile file;
    std::atomic<bool> pathIsGiven = false;
    std::atomic<std::int64_t> lastDefault = never;
};

constexpr std::int32_t unknownLevel = -1;
std::atomic<std::int32_t> lowestLevel = unknownLevel;

struct Log {
    std::shared_ptr<RotatingSink> sink = std::make_shared<RotatingSink>();
    spdlog::logger logger{"controller", sink};

    Log() { logger.set_level(spdlog::level::debug); }
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

spdlog::level::level_enum NativeLevel(Level level) {
    switch (level) {
    case Level::Debug:
        return spdlog::level::debug;
    case Level::Info:
        return spdlog::level::info;
    case Level::Warning:
        return spdlog::level::warn;
    case Level::Error:
        break;
    }
    return spdlog::level::err;
}

} // namespace

void UsePath(const std::wstring& path) noexcept {
    Quietly([&] { TheLog().sink->SetPath(path); });
}

void UseDefaultPath(const std::wstring& path) noexcept {
    Quietly([&] { TheLog().sink->SetDefaultPath(path); });
}

bool WantsDefaultPath() noexcept {
    return TheLog().sink->WantsDefaultPath();
}

void ForgetDefaultPath() noexcept {
    TheLog().sink->ForgetDefaultPath();
}

void UseLevel(Level level) noexcept {
    lowestLevel = static_cast<std::int32_t>(level);
}

void ForgetLevel() noexcept {
    lowestLevel = unknownLevel;
}

bool WantsLevel() noexcept {
    return lowestLevel == unknownLevel;
}

bool Takes(Level level) noexcept {
    const std::int32_t lowest = lowestLevel;
    return static_cast<std::int32_t>(level) >=
           (lowest == unknownLevel ? static_cast<std::int32_t>(Level::Info) : lowest);
}

void Write(Level level, const std::wstring& message) noexcept {
    Quietly([&] { TheLog().logger.log(NativeLevel(level), text::EscapedUtf8(message)); });
}

} // namespace log_file

#include "scenario_runner/OutputCapture.h"

#include <thread>
#include <utility>

#include "platform/processes/OutputPipe.h"
#include "platform/processes/Waiting.h"
#include "scenario_runner/ScenarioLog.h"
#include "text/Text.h"

namespace scenario_runner {

struct OutputCapture::Channel {
    Channel(const std::wstring& logPath, std::size_t limit) : log(logPath, limit) {}

    void CarryAll(std::string bytes) {
        constexpr std::size_t mostBytes = 64 * 1024;
        log.Append(bytes);
        for (pipe.Read(mostBytes, bytes); !bytes.empty(); pipe.Read(mostBytes, bytes)) {
            log.Append(bytes);
        }
        Finish();
    }

    void Finish() {
        log.Close();
        finished.Raise();
    }

    platform::OutputPipe pipe;
    ScenarioLog log;
    platform::Event finished;
};

OutputCapture::OutputCapture(const std::wstring& logPath, std::size_t limit)
    : channel(std::make_shared<Channel>(logPath, limit)) {}

platform::Error OutputCapture::Open() {
    const platform::Error result = channel->log.Open();
    return result ? channel->pipe.Open() : result;
}

void OutputCapture::Note(const std::wstring& line) {
    channel->log.Append('[' + text::ToUtf8(line) + "]\n");
}

void* OutputCapture::WriteEnd() const {
    return channel->pipe.WriteEnd();
}

void OutputCapture::Start() {
    channel->pipe.CloseWriteEnd();
    if (channel->pipe.Readable() == nullptr) {
        StartThread({});
    }
}

void* OutputCapture::Readable() const {
    return isCarried ? nullptr : channel->pipe.Readable();
}

void OutputCapture::CarryIfReadable() {
    constexpr std::chrono::milliseconds now{0};
    constexpr std::size_t mostBytes = 4096;
    if (isCarried || !platform::WaitForAny({channel->pipe.Readable()}, now)) {
        return;
    }
    std::string bytes;
    channel->pipe.ReadAvailable(mostBytes, bytes);
    // Readable without a byte means the end.
    if (bytes.empty()) {
        isCarried = true;
        channel->Finish();
    } else {
        StartThread(std::move(bytes));
    }
}

void OutputCapture::StartThread(std::string first) {
    isCarried = true;
    std::thread([shared = channel, first = std::move(first)] { shared->CarryAll(first); }).detach();
}

void OutputCapture::Finish(std::chrono::milliseconds timeout) {
    CarryIfReadable();
    if (!isCarried) {
        StartThread({});
    }
    platform::WaitForAny({channel->finished.Handle()}, timeout);
}

} // namespace scenario_runner

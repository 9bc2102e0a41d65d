#include "scenario_runner/OutputCapture.h"

#include <thread>

#include "platform/processes/OutputPipe.h"
#include "platform/processes/Waiting.h"
#include "scenario_runner/ScenarioLog.h"

namespace scenario_runner {

struct OutputCapture::Channel {
    Channel(const std::wstring& logPath, std::size_t limit) : log(logPath, limit) {}

    void CarryAll() {
        constexpr std::size_t mostBytes = 64 * 1024;
        std::string bytes;
        for (pipe.Read(mostBytes, bytes); !bytes.empty(); pipe.Read(mostBytes, bytes)) {
            log.Append(bytes);
        }
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
    const platform::Error error = channel->log.Open();
    return error ? error : channel->pipe.Open();
}

void* OutputCapture::WriteEnd() const {
    return channel->pipe.WriteEnd();
}

void OutputCapture::Start() {
    channel->pipe.CloseWriteEnd();
    std::thread([shared = channel] { shared->CarryAll(); }).detach();
}

void OutputCapture::Finish(std::chrono::milliseconds patience) {
    platform::WaitForAny({channel->finished.Handle()}, patience);
}

} // namespace scenario_runner

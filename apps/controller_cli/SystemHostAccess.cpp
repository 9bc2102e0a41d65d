#include "controller_cli/SystemHostAccess.h"

#include <chrono>
#include <thread>

#include "companion/Settings.h"
#include "controller_cli/RequestProxy.h"
#include "modules/EventTransmitter.h"
#include "modules/EventTransmitterManager.h"
#include "platform/Console.h"
#include "platform/Directories.h"
#include "platform/NativePath.h"
#include "platform/Pipe.h"
#include "platform/StopSignal.h"
#include "platform/Text.h"
#include "platform/Waiting.h"

namespace controller_cli {
namespace {

/// More than the host's own limit for its start.
constexpr std::chrono::seconds startLimit{45};
constexpr std::size_t largestRead = 4096;

std::wstring CannotStart(const platform::ProcessStart& start, const platform::Error& error) {
    return platform::ToNativeText(start.program) + L": " + error.Text();
}

/// What a host that did not start has said, without its line end.
std::wstring LastWords(platform::OutputPipe& pipe) {
    std::string bytes;
    pipe.Read(largestRead, bytes);
    bytes.erase(bytes.find_last_not_of(" \r\n") + 1);
    return platform::FromUtf8(bytes);
}

void PassOutputOn(platform::OutputPipe& pipe) {
    std::string bytes;
    for (pipe.Read(largestRead, bytes); !bytes.empty(); pipe.Read(largestRead, bytes)) {
        // The host goes on when nobody reads its log lines.
        (void)platform::WriteOutput(bytes);
    }
}

/// Returns when the host has ended. A host that has just been started may not listen yet: it is asked again.
void AskToEnd(void* host, EventTransmitter* transmitter) {
    constexpr std::chrono::milliseconds interval{500};
    do {
        if (transmitter == nullptr || !RequestProxy(*transmitter).TerminateRequest()) {
            platform::AskProcessToEnd(host);
        }
    } while (!platform::WaitForAny({host}, interval));
}

} // namespace

SystemHostAccess::SystemHostAccess() {
    const auto current = settings::Current();
    settingsFile = current->file;
    transmitterModule = current->eventTransmitter;
    transmitterId = L"client:" + current->transmitterName;
}

EventTransmitter* SystemHostAccess::Transmitter() {
    return EventTransmitterManager(transmitterModule).GetEventTransmitter(transmitterId);
}

/// The host finds its settings where this program found them, whatever its current folder.
platform::ProcessStart SystemHostAccess::HostProcess() const {
    platform::ProcessStart start;
    start.program = platform::ProgramFolder() + L"\\controller_host" + platform::programExtension;
    if (!settingsFile.empty()) {
        start.environment = {{L"CONTROLLER_SETTINGS_FILE", platform::ToNativeText(settingsFile)}};
    }
    return start;
}

std::wstring SystemHostAccess::StartHost() {
    platform::OutputPipe pipe;
    if (const platform::Error error = pipe.Open()) {
        return error.Text();
    }
    platform::ProcessStart start = HostProcess();
    start.arguments = {L"--background"};
    start.output = pipe.WriteEnd();
    platform::OwnedHandle starter;
    if (const platform::Error error = platform::StartProcess(start, starter)) {
        return CannotStart(start, error);
    }
    pipe.CloseWriteEnd();
    if (!platform::WaitForAny({starter.Get()}, startLimit)) {
        return platform::ToNativeText(start.program) + L": > " + std::to_wstring(startLimit.count()) + L" s";
    }
    const auto exitCode = platform::ExitCode(starter.Get());
    return exitCode == 0 ? std::wstring() : LastWords(pipe);
}

std::int32_t SystemHostAccess::RunHost(std::wstring& problem) {
    const platform::StopSignal stop;
    platform::OutputPipe pipe;
    platform::ProcessStart start = HostProcess();
    platform::Error error = pipe.Open();
    start.output = pipe.WriteEnd();
    platform::OwnedHandle host;
    if (!error) {
        error = platform::StartProcess(start, host);
    }
    if (error) {
        problem = CannotStart(start, error);
        return 0;
    }
    pipe.CloseWriteEnd();
    std::thread printer([&pipe] { PassOutputOn(pipe); });
    if (platform::WaitForAny({stop.Handle(), host.Get()}, std::nullopt) == std::size_t{0}) {
        AskToEnd(host.Get(), Transmitter());
    }
    platform::WaitForAny({host.Get()}, std::nullopt);
    printer.join();
    return platform::ExitCode(host.Get()).value_or(1);
}

} // namespace controller_cli

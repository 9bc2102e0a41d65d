#include "controller_cli/SystemHostAccess.h"

#include <chrono>
#include <string_view>
#include <thread>

#include "companion/Settings.h"
#include "controller_cli/RequestProxy.h"
#include "modules/EventTransmitter.h"
#include "modules/EventTransmitterDescription.h"
#include "modules/EventTransmitterManager.h"
#include "platform/Console.h"
#include "platform/Directories.h"
#include "platform/ErrorOutput.h"
#include "platform/NativePath.h"
#include "platform/Pipe.h"
#include "platform/ProcessIdentity.h"
#include "platform/SharedLibrary.h"
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

void WriteLogLines(std::string_view bytes) {
    // The host goes on when nobody reads them.
    (void)platform::WriteOutput(bytes);
}

/// Passes on what a program prints to one of its streams, until it has ended.
class Relay {
public:
    explicit Relay(void (*writer)(std::string_view)) : write(writer) {}
    ~Relay() {
        if (thread.joinable()) {
            thread.join();
        }
    }
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    platform::Error Open() { return pipe.Open(); }
    void* WriteEnd() const { return pipe.WriteEnd(); }
    /// To be called once the program has been started.
    void Start() {
        pipe.CloseWriteEnd();
        thread = std::thread([this] { Run(); });
    }

private:
    void Run() {
        std::string bytes;
        for (pipe.Read(largestRead, bytes); !bytes.empty(); pipe.Read(largestRead, bytes)) {
            write(bytes);
        }
    }

    void (*write)(std::string_view);
    platform::OutputPipe pipe;
    std::thread thread;
};

/// Returns when the host has ended. A host that has just been started may not listen yet: it is asked again.
void AskToEnd(void* host, EventTransmitter* transmitter, EventTransmitterExtension* extension) {
    constexpr std::chrono::milliseconds interval{500};
    do {
        if (transmitter == nullptr || !RequestProxy(*transmitter, extension).TerminateRequest()) {
            platform::AskProcessToEnd(host);
        }
    } while (!platform::WaitForAny({host}, interval));
}

} // namespace

SystemHostAccess::SystemHostAccess() {
    const auto current = settings::Current();
    settingsFile = current->file;
    jobListFile = current->jobListFile;
    transmitterModule = current->eventTransmitter;
    platform::ProvideLibraries(transmitterModule, current->libraryDirectories);
    transmitterId = L"client:" + current->transmitterName;
}

EventTransmitter* SystemHostAccess::Transmitter() {
    return EventTransmitterManager(transmitterModule).GetEventTransmitter(transmitterId);
}

EventTransmitterExtension* SystemHostAccess::Extension() {
    return EventTransmitterManager(transmitterModule).GetExtension(transmitterId);
}

bool SystemHostAccess::IsHostThere() {
    host_lock::Holder holder;
    return FindHolder(holder);
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
    Relay output(WriteLogLines);
    Relay errors(platform::WriteErrorOutput);
    platform::Error error = output.Open();
    if (!error) {
        error = errors.Open();
    }
    platform::ProcessStart start = HostProcess();
    start.output = output.WriteEnd();
    platform::OwnedHandle host;
    if (!error) {
        error = platform::StartProcess(start, errors.WriteEnd(), host);
    }
    if (error) {
        problem = CannotStart(start, error);
        return 0;
    }
    output.Start();
    errors.Start();
    if (platform::WaitForAny({stop.Handle(), host.Get()}, std::nullopt) == std::size_t{0}) {
        AskToEnd(host.Get(), Transmitter(), Extension());
    }
    platform::WaitForAny({host.Get()}, std::nullopt);
    return platform::ExitCode(host.Get()).value_or(1);
}

bool SystemHostAccess::FindHolder(host_lock::Holder& holder) const {
    return host_lock::FindHolder(jobListFile, holder);
}

std::wstring SystemHostAccess::HostElsewhere() {
    host_lock::Holder holder;
    const bool isElsewhere = FindHolder(holder) && holder.isReady &&
                             (holder.place != Place() || L"client:" + holder.transmitterName != transmitterId ||
                              !platform::SameName(holder.eventTransmitter, transmitterModule));
    return isElsewhere ? host_lock::Describe(holder) : std::wstring();
}

std::wstring SystemHostAccess::Place() {
    return DescribeEventTransmitter(transmitterModule, transmitterId).place;
}

/// A module that only the lock file names is not loaded: the settings alone say what runs here.
bool SystemHostAccess::AskHolderToEnd(const host_lock::Holder& holder, void* process) const {
    const std::wstring id = L"client:" + holder.transmitterName;
    if (id != transmitterId && platform::SameName(holder.eventTransmitter, transmitterModule)) {
        EventTransmitterManager modules(transmitterModule);
        EventTransmitter* const transmitter = modules.GetEventTransmitter(id);
        if (transmitter != nullptr && RequestProxy(*transmitter, modules.GetExtension(id)).TerminateRequest()) {
            return true;
        }
    }
    return platform::AskOtherProcessToEnd(process);
}

HostEnd SystemHostAccess::EndRunningHost(std::chrono::milliseconds patience) {
    host_lock::Holder holder;
    if (!FindHolder(holder)) {
        return HostEnd::Ended;
    }
    // Opened before it is asked: the number alone could be another process by then.
    const platform::OwnedHandle process = host_lock::OpenHolder(holder);
    if (!process || !AskHolderToEnd(holder, process.Get())) {
        return HostEnd::CannotBeAsked;
    }
    return platform::WaitForAny({process.Get()}, patience) ? HostEnd::Ended : HostEnd::StillRunning;
}

} // namespace controller_cli

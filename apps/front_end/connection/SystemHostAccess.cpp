#include "front_end/connection/SystemHostAccess.h"

#include <chrono>
#include <string_view>
#include <thread>

#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/EventTransmitterManager.h"
#include "formats/HostRecords.h"
#include "front_end/connection/RequestProxy.h"
#include "modules/EventTransmitterDescription.h"
#include "modules/ModuleProblem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/ForeignProcess.h"
#include "platform/processes/OutputPipe.h"
#include "platform/processes/Process.h"
#include "platform/processes/StopSignal.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace front_end {
namespace {

/// Longer than the host's own timeout for its start.
constexpr std::chrono::seconds startLimit{45};
constexpr std::size_t largestRead = 4096;
/// The capacity of a pipe.
constexpr std::size_t mostSaid = std::size_t{64} << 10;

std::wstring CannotStart(const platform::ProcessStart& start, const platform::Error& error) {
    return platform::ToNativeText(start.program) + L": " + error.Text();
}

/// The output of the program that started a host, without the last line end. Does not wait for the end of the pipe,
/// which the host may hold open.
std::wstring LastWords(platform::OutputPipe& pipe) {
    std::string bytes;
    pipe.ReadAvailable(mostSaid, bytes);
    bytes.erase(bytes.find_last_not_of(" \r\n") + 1);
    return text::FromUtf8(bytes);
}

void WriteLogLines(std::string_view bytes) {
    // The error is ignored: the host keeps running without a reader of its log.
    (void)platform::WriteOutput(bytes);
}

/// Forwards what a program prints to one of its streams, until the program has ended.
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
    /// Called when the program has been started.
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

/// A program whose output and errors are those of this one.
class RelayedProgram {
public:
    explicit RelayedProgram(platform::ProcessStart program) : start(std::move(program)) {}

    /// On failure returns false and sets `problem`.
    [[nodiscard]] bool Start(std::wstring& problem) {
        platform::Error result = output.Open();
        if (result) {
            result = errors.Open();
        }
        start.output = output.WriteEnd();
        if (result) {
            result = platform::StartProcess(start, errors.WriteEnd(), process);
        }
        if (!result) {
            problem = CannotStart(start, result);
            return false;
        }
        output.Start();
        errors.Start();
        return true;
    }

    void* Process() const { return process.Get(); }

    std::int32_t AwaitEnd() const {
        platform::WaitForAny({process.Get()}, std::nullopt);
        return platform::ExitCode(process.Get()).value_or(1);
    }

private:
    platform::ProcessStart start;
    Relay output{WriteLogLines};
    Relay errors{platform::WriteErrorOutput};
    platform::OwnedHandle process;
};

/// Returns when the host has ended. A host that has just been started may not listen yet, so the request is repeated.
void AskToEnd(void* host, EventTransmitter* transmitter, EventTransmitterExtension* extension) {
    constexpr std::chrono::milliseconds interval{500};
    do {
        if (transmitter == nullptr || !RequestProxy(*transmitter, extension).TerminateRequest()) {
            platform::RequestTermination(host);
        }
    } while (!platform::WaitForAny({host}, interval));
}

/// If the host has not received a request, its process is asked to end.
HostEnd AwaitEnd(void* process, bool isAsked, std::chrono::milliseconds timeout) {
    if (process == nullptr || !(isAsked || platform::RequestTermination(process))) {
        return HostEnd::CannotBeAsked;
    }
    return platform::WaitForAny({process}, timeout) ? HostEnd::Ended : HostEnd::StillRunning;
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

std::wstring SystemHostAccess::TransmitterProblem() {
    if (std::wstring problem = ModuleProblem(transmitterModule, {"GetEventTransmitter"}); !problem.empty()) {
        return problem;
    }
    const std::wstring said = DescribeEventTransmitter(transmitterModule, transmitterId).problem;
    return L"gives no transmitter \"" + transmitterId + L"\"" + (said.empty() ? L"." : L": " + said + L".");
}

EventTransmitterExtension* SystemHostAccess::Extension() {
    return EventTransmitterManager(transmitterModule).GetExtension(transmitterId);
}

bool SystemHostAccess::IsHostThere() {
    host_lock::Holder holder;
    return FindHolder(holder);
}

std::optional<host_lock::Holder> SystemHostAccess::RunningHost() {
    host_lock::Holder holder;
    return FindHolder(holder) ? std::optional(holder) : std::nullopt;
}

/// A program gets the settings file of this one, independent of its current directory.
platform::ProcessStart SystemHostAccess::ProcessOf(const std::wstring& programName) const {
    platform::ProcessStart start;
    start.program = platform::ProgramDirectory() + L"\\" + programName + platform::programExtension;
    if (!settingsFile.empty()) {
        start.environment = {{L"CONTROLLER_SETTINGS_FILE", platform::ToNativeText(settingsFile)}};
    }
    return start;
}

platform::ProcessStart SystemHostAccess::HostProcess() const {
    return ProcessOf(L"controller_host");
}

std::wstring SystemHostAccess::HostProgramVersion() {
    platform::OutputPipe pipe;
    if (const platform::Error result = pipe.Open(); !result) {
        return result.Text();
    }
    platform::ProcessStart start = HostProcess();
    start.arguments = {L"--version"};
    start.output = pipe.WriteEnd();
    platform::OwnedHandle program;
    if (const platform::Error result = platform::StartProcess(start, program); !result) {
        return CannotStart(start, result);
    }
    pipe.CloseWriteEnd();
    (void)platform::WaitForAny({program.Get()}, startLimit);
    return LastWords(pipe);
}

bool SystemHostAccess::StartHost(std::wstring& warnings, std::wstring& problem) {
    warnings.clear();
    platform::OutputPipe pipe;
    if (const platform::Error result = pipe.Open(); !result) {
        problem = result.Text();
        return false;
    }
    platform::ProcessStart start = HostProcess();
    start.arguments = {L"--background"};
    start.output = pipe.WriteEnd();
    platform::OwnedHandle starter;
    if (const platform::Error result = platform::StartProcess(start, starter); !result) {
        problem = CannotStart(start, result);
        return false;
    }
    pipe.CloseWriteEnd();
    if (!platform::WaitForAny({starter.Get()}, startLimit)) {
        problem = platform::ToNativeText(start.program) + L": > " + std::to_wstring(startLimit.count()) + L" s";
        return false;
    }
    const bool isStarted = platform::ExitCode(starter.Get()) == 0;
    (isStarted ? warnings : problem) = LastWords(pipe);
    return isStarted;
}

std::optional<std::int32_t> SystemHostAccess::RunHost(std::wstring& problem) {
    const platform::StopSignal stop;
    RelayedProgram host(HostProcess());
    if (!host.Start(problem)) {
        return std::nullopt;
    }
    if (platform::WaitForAny({stop.Handle(), host.Process()}, std::nullopt) == std::size_t{0}) {
        AskToEnd(host.Process(), Transmitter(), Extension());
    }
    return host.AwaitEnd();
}

std::optional<std::int32_t> SystemHostAccess::RunWebProgram(const std::vector<std::wstring>& arguments,
                                                            std::wstring& problem) {
    platform::ProcessStart start = ProcessOf(L"controller_web");
    start.arguments = arguments;
    RelayedProgram program(std::move(start));
    return program.Start(problem) ? std::optional(program.AwaitEnd()) : std::nullopt;
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

/// A module that only the lock file names is not loaded: only the settings decide which code runs in this process.
bool SystemHostAccess::RequestEndOf(const host_lock::Holder& holder) const {
    if (!platform::SameName(holder.eventTransmitter, transmitterModule)) {
        return false;
    }
    const std::wstring id = L"client:" + holder.transmitterName;
    EventTransmitterManager modules(transmitterModule);
    EventTransmitter* const transmitter = modules.GetEventTransmitter(id);
    return transmitter != nullptr && RequestProxy(*transmitter, modules.GetExtension(id)).TerminateRequest();
}

HostEnd SystemHostAccess::EndRunningHost(std::chrono::milliseconds timeout) {
    host_lock::Holder holder;
    if (!FindHolder(holder)) {
        return HostEnd::Ended;
    }
    // The process is opened before it is asked: afterwards its process id could be reused.
    const platform::OwnedHandle process = host_lock::OpenHolder(holder);
    // A host with this program's own endpoint has already been asked.
    const bool isAsked = L"client:" + holder.transmitterName != transmitterId && RequestEndOf(holder);
    return AwaitEnd(process.Get(), isAsked, timeout);
}

std::vector<host_lock::Holder> SystemHostAccess::HostsOfSettingsFile() {
    return host_records::StartedWith(settings::FileInUse());
}

HostEnd SystemHostAccess::EndHostOfSettingsFile(const host_lock::Holder& holder, std::chrono::milliseconds timeout) {
    const platform::OwnedHandle process = host_lock::OpenHolder(holder);
    return AwaitEnd(process.Get(), RequestEndOf(holder), timeout);
}

} // namespace front_end

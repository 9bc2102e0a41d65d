#include "controller_host/Host.h"

#include <chrono>
#include <utility>
#include <vector>

#include "companion/HostLock.h"
#include "companion/JobListFile.h"
#include "companion/Settings.h"
#include "controller_host/DeletionNotes.h"
#include "controller_host/HostEngine.h"
#include "controller_host/HostLoop.h"
#include "controller_host/LeftoverScenarios.h"
#include "controller_host/OtherHost.h"
#include "controller_host/RequestAnswers.h"
#include "controller_host/RequestInbox.h"
#include "controller_host/StartChecks.h"
#include "modules/EventTransmitterDescription.h"
#include "modules/EventTransmitterManager.h"
#include "modules/FunctionManager.h"
#include "platform/Console.h"
#include "platform/FaultPoint.h"
#include "platform/FileLock.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"
#include "platform/OneLine.h"
#include "platform/Process.h"
#include "platform/StopSignal.h"
#include "platform/Text.h"
#include "support/ControllerLogManager.h"

namespace {

HostExit Refuse(HostExit code, const std::wstring& problem) {
    ControllerLogManager::ErrorLog(problem);
    platform::WriteErrorOutput("controller_host: " + platform::ToUtf8(platform::Escaped(problem)) + "\n");
    return code;
}

std::wstring LockFile(const settings::Settings& settings) {
    return host_lock::FileFor(settings.jobListFile);
}

/// The lock of the job list, which says who has it. Its file goes with it.
class Place {
public:
    Place() = default;
    ~Place() { lock.Remove(); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    platform::Error Take(const settings::Settings& settings) {
        platform::Error error = platform::EnsurePrivateFolders(platform::ParentFolder(settings.jobListFile));
        if (!error) {
            error = lock.Take(LockFile(settings));
        }
        if (!error) {
            holder = host_lock::OwnHolder();
            holder.settingsFile = settings.file;
            holder.eventTransmitter = settings.eventTransmitter;
            holder.transmitterName = settings.transmitterName;
            Write();
        }
        return error;
    }

    /// Front ends can reach the host now.
    void SetReady() {
        holder.isReady = true;
        holder.place = DescribeEventTransmitter(holder.eventTransmitter, TransmitterId(holder.transmitterName)).place;
        Write();
    }

    static std::wstring TransmitterId(const std::wstring& name) { return L"engine:" + name; }

private:
    /// On a full disk nobody is told who has the lock; it holds all the same.
    void Write() {
        if (const platform::Error error = lock.Write(host_lock::Serialize(holder))) {
            ControllerLogManager::WarnLog(L"The lock of the job list cannot say which process holds it: " +
                                          error.Text());
        }
    }

    platform::FileLock lock;
    host_lock::Holder holder;
};

HostExit RefuseWithoutPlace(const settings::Settings& settings, const platform::Error& error) {
    if (error.kind == platform::ErrorKind::InUse) {
        return Refuse(HostExit::AlreadyRunning, OtherHostProblem(settings));
    }
    return Refuse(HostExit::CouldNotRun, L"the lock of the job list, " + platform::ToNativeText(LockFile(settings)) +
                                             L", cannot be taken: " + error.Text() +
                                             L". It must be a file that this user can write; what else stands there "
                                             L"can be removed while no host runs.");
}

/// Long enough for scenarios that need their whole grace time, and for their runners to end.
std::chrono::milliseconds Patience(const settings::Settings& settings) {
    return std::chrono::seconds(settings.cancelGraceSeconds) + std::chrono::seconds(5);
}

/// At every start, also when an earlier host put the list aside; front ends say it, too.
void TellOfDamagedLists(const settings::Settings& settings) {
    for (const std::wstring& file : job_list_file::KeptAside(settings.jobListFile)) {
        ControllerLogManager::WarnLog(L"A job list that could not be read is kept as " + platform::ToNativeText(file) +
                                      L": jobs may be missing. Remove or rename that file once you have dealt with it");
    }
}

void Warn(const std::vector<std::wstring>& problems) {
    for (const std::wstring& problem : problems) {
        ControllerLogManager::WarnLog(problem);
    }
}

HostExit ServeFrontEnds(const settings::Settings& settings, EventTransmitter& transmitter, Place& place,
                        const std::wstring& readyEvent) {
    ControllerLogManager::Initialize(0, settings.logFile, readyEvent.empty());
    job_list_file::RemoveLeftovers(settings.jobListFile);
    job_list_file::RemoveLeftovers(DeletionNotes::FileBeside(settings.jobListFile));
    StopLeftoverScenarios(settings.jobListFile);
    platform::ReachFaultPoint(platform::FaultPoint::LeftoversStopped);
    FunctionManager functions({});
    std::vector<std::wstring> moduleProblems = start_checks::LoadFunctionModules(settings, functions);
    Warn(moduleProblems);
    Warn(start_checks::ProgramProblems(settings));
    HostEngine engine(&functions);
    engine.SetModuleProblems(std::move(moduleProblems));
    platform::ReachFaultPoint(platform::FaultPoint::EngineMade);
    TellOfDamagedLists(settings);
    engine.FinishDeletions();
    engine.DeleteOldJobsDurably();
    const std::size_t scenarios = engine.UpdateCatalogue().size();
    const platform::StopSignal stop;
    RequestAnswers answers(engine, transmitter);
    RequestInbox inbox(transmitter, RequestAnswers::Names());
    ControllerLogManager::Log(L"The host is ready; scenarios: " + std::to_wstring(scenarios));
    place.SetReady();
    platform::Event(platform::TakeInheritedHandle(readyEvent)).Raise();
    platform::ReachFaultPoint(platform::FaultPoint::HostReady);
    HostLoop(engine, inbox, answers, stop.Handle()).Run(Patience(settings));
    ControllerLogManager::Log(L"The host has ended.");
    platform::ReachFaultPoint(platform::FaultPoint::HostEnds);
    return HostExit::Ended;
}

} // namespace

HostExit RunHost(const std::wstring& readyEvent) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        return Refuse(HostExit::CouldNotRun, problem);
    }
    const auto settings = settings::CurrentForThisRun();
    // A refusal is told on standard error, not on the console's log as well.
    ControllerLogManager::Initialize(0, settings->logFile, false);
    Place place;
    if (const platform::Error error = place.Take(*settings)) {
        return RefuseWithoutPlace(*settings, error);
    }
    // The engine would begin with an empty list.
    if (const std::wstring obstacle = job_list_file::Obstacle(settings->jobListFile); !obstacle.empty()) {
        return Refuse(HostExit::CouldNotRun, L"the job list cannot be used, and is left as it is: " + obstacle);
    }
    platform::ReachFaultPoint(platform::FaultPoint::PlaceTaken);
    start_checks::ProvideModuleLibraries(*settings);
    EventTransmitterManager modules(settings->eventTransmitter);
    EventTransmitter* const transmitter = modules.GetEventTransmitter(Place::TransmitterId(settings->transmitterName));
    if (transmitter == nullptr || !transmitter->IsConnected()) {
        return Refuse(HostExit::CouldNotRun, start_checks::TransmitterProblem(*settings));
    }
    return ServeFrontEnds(*settings, *transmitter, place, readyEvent);
}

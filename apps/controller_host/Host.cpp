#include "controller_host/Host.h"

#include <chrono>
#include <utility>
#include <vector>

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/EventTransmitterManager.h"
#include "CommonControllerLib/FunctionManager.h"
#include "controller_host/DeletionJournal.h"
#include "controller_host/EngineTransmitter.h"
#include "controller_host/HostEngine.h"
#include "controller_host/HostLoop.h"
#include "controller_host/HostPlace.h"
#include "controller_host/OrphanCleanup.h"
#include "controller_host/OtherHost.h"
#include "controller_host/RequestHandler.h"
#include "controller_host/RequestQueue.h"
#include "fault_points/FaultPoint.h"
#include "formats/HostLock.h"
#include "formats/JobListFile.h"
#include "modules/StartChecks.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/ProcessTree.h"
#include "platform/processes/StopSignal.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "text/EscapeControls.h"

namespace {

HostExit Refuse(HostExit code, const std::wstring& problem) {
    ControllerLogManager::ErrorLog(problem);
    platform::WriteErrorOutput("controller_host: " + text::EscapedUtf8(problem) + "\n");
    return code;
}

/// A front end that checks whether a host is starting may hold the lock for a moment.
constexpr std::chrono::milliseconds lookTime{200};
/// Shorter than the timeout for starting a host in the background.
constexpr std::chrono::seconds otherStartTime{25};

HostExit RefuseWithoutLock(const settings::Settings& settings, const platform::Error& error) {
    if (error.kind == platform::ErrorKind::InUse) {
        return Refuse(HostExit::AlreadyRunning, OtherHostProblem(settings));
    }
    return Refuse(HostExit::CouldNotRun, L"the lock of the job list, " +
                                             platform::ToNativeText(host_lock::FileFor(settings.jobListFile)) +
                                             L", cannot be taken: " + error.Text() +
                                             L". It must be a file that this user can write; what else stands there "
                                             L"can be removed while no host runs.");
}

/// Long enough for scenarios that use their whole grace time, and for their runners to exit.
std::chrono::milliseconds EndTimeout(const settings::Settings& settings) {
    return std::chrono::seconds(settings.cancelGraceSeconds) + std::chrono::seconds(5);
}

/// Reported at every start, also if an earlier host quarantined the list. Front ends show it, too.
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

void WarnWithoutExtension(const settings::Settings& settings) {
    ControllerLogManager::WarnLog(platform::ToNativeText(settings.eventTransmitter) +
                                  L" has no \"GetEventTransmitterExtension\" of version " +
                                  std::to_wstring(EventTransmitterExtension::version) +
                                  L": every front end gets every answer, and requests are not acknowledged.");
}

/// Accepts front ends and answers them until the host is asked to end. Called only when the host can serve connections.
HostExit ServeFrontEnds(const settings::Settings& settings, HostEngine& engine, HostPlace& place,
                        const std::wstring& readyEvent) {
    EventTransmitterManager modules(settings.eventTransmitter);
    const std::wstring transmitterId = L"engine:" + settings.transmitterName;
    EventTransmitter* const transmitter = modules.GetEventTransmitter(transmitterId);
    EventTransmitterExtension* const extension = transmitter == nullptr ? nullptr : modules.GetExtension(transmitterId);
    if (transmitter == nullptr || (extension != nullptr && !extension->IsConnected())) {
        return Refuse(HostExit::CouldNotRun, start_checks::TransmitterProblem(settings));
    }
    if (extension == nullptr) {
        WarnWithoutExtension(settings);
    }
    const platform::StopSignal stop;
    EngineTransmitter engineTransmitter(*transmitter, extension);
    RequestHandler answers(engine, engineTransmitter);
    RequestQueue queue(engineTransmitter, RequestHandler::Names());
    {
        // Takes all that it needs of the system before front ends rely on the host. Its end ends the hooks.
        HostLoop loop(engine, queue, answers, stop.Handle());
        place.SetReady();
        platform::Event(platform::TakeInheritedHandle(readyEvent)).Raise();
        fault_points::ReachFaultPoint(fault_points::FaultPoint::HostReady);
        loop.Run(EndTimeout(settings));
    }
    ControllerLogManager::Log(L"The host has ended.");
    fault_points::ReachFaultPoint(fault_points::FaultPoint::HostEnds);
    return HostExit::Ended;
}

HostExit LoadAndServe(const settings::Settings& settings, HostPlace& place, const std::wstring& readyEvent) {
    ControllerLogManager::Initialize(0, settings.logFile, readyEvent.empty());
    job_list_file::RemoveLeftovers(settings.jobListFile);
    job_list_file::RemoveLeftovers(DeletionJournal::FileBeside(settings.jobListFile));
    StopOrphanCleanup(settings.jobListFile);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::LeftoversStopped);
    FunctionManager functions({});
    std::vector<std::wstring> moduleProblems = start_checks::LoadFunctionModules(settings, functions);
    Warn(moduleProblems);
    Warn(start_checks::ProgramProblems(settings));
    EndLostRuns(functions);
    HostEngine engine(&functions);
    engine.SetModuleProblems(std::move(moduleProblems));
    fault_points::ReachFaultPoint(fault_points::FaultPoint::EngineMade);
    TellOfDamagedLists(settings);
    engine.FinishDeletions();
    engine.DeleteOldJobsDurably();
    const std::size_t scenarios = engine.UpdateCatalogue().size();
    ControllerLogManager::Log(L"The host is ready; scenarios: " + std::to_wstring(scenarios));
    return ServeFrontEnds(settings, engine, place, readyEvent);
}

} // namespace

HostExit RunHost(const std::wstring& readyEvent) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        return Refuse(HostExit::CouldNotRun, problem);
    }
    const auto settings = settings::FrozenForProcess();
    // Refusals go to standard error only, not also to the console log.
    ControllerLogManager::Initialize(0, settings->logFile, false);
    HostPlace place;
    const std::chrono::milliseconds timeout = readyEvent.empty() ? lookTime : otherStartTime;
    if (const platform::Error result = place.Take(*settings, timeout); !result) {
        return RefuseWithoutLock(*settings, result);
    }
    // With an unusable file the engine would start with an empty list.
    if (std::wstring problem; !job_list_file::CheckUsable(settings->jobListFile, problem)) {
        return Refuse(HostExit::CouldNotRun, L"the job list cannot be used, and is left as it is: " + problem);
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::PlaceTaken);
    start_checks::ProvideModuleLibraries(*settings);
    // The runner of a job that has such limits says why they are not enforced.
    std::wstring ignored;
    (void)platform::PrepareResourceLimits(ignored);
    return LoadAndServe(*settings, place, readyEvent);
}

#include "system/soak/SoakDriver.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/OtherProcesses.h"
#include "kit/SystemHelpers.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "system/soak/HostFigures.h"
#include "text/Text.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace {

using std::chrono::milliseconds;

/// Jobs are enqueued while fewer than this wait.
constexpr std::size_t queueLength = 100;
constexpr std::size_t mostJobsOfARequest = 20;
constexpr milliseconds lookInterval{40};
/// Polls without an event of the host: far longer than any scenario that ends by itself.
constexpr int longestSilence = 3000;

bool IsWaiting(const JobLedger::Job& job) {
    return job.told == JobStatus::Queued;
}

bool IsOver(const JobLedger::Job& job) {
    return IsFinal(job.told);
}

bool IsNotOver(const JobLedger::Job& job) {
    return !IsOver(job);
}

/// It runs until it is cancelled.
bool RunsForEver(const JobLedger::Job& job) {
    return job.told == JobStatus::Running && (!job.end || !job.end->status);
}

} // namespace

SoakDriver::SoakDriver(SoakPlace soakPlace, unsigned seed) : place(std::move(soakPlace)), random(seed) {
    ConnectAnew();
}

const std::vector<SoakDriver::Action>& SoakDriver::Actions() {
    static const std::vector<Action> actions{
        {"status queries", 300, &SoakDriver::AskForStatus},
        {"list queries", 40, &SoakDriver::AskForList},
        {"scenario queries", 40, &SoakDriver::AskForScenarios},
        {"nonsense requests", 40, &SoakDriver::AskNonsense},
        {"cancels", 40, &SoakDriver::CancelOne},
        {"cancels of all jobs", 1, &SoakDriver::CancelAll},
        {"holds", 40, &SoakDriver::HoldOne},
        {"releases", 20, &SoakDriver::ReleaseAll},
        {"deletes", 150, &SoakDriver::DeleteSome},
        {"runners killed", 40, &SoakDriver::KillRunner},
        {"scenarios killed", 80, &SoakDriver::KillScenario},
        {"front ends started", 200, &SoakDriver::StartFrontEnd},
        {"front ends killed", 100, &SoakDriver::KillFrontEnd},
    };
    return actions;
}

/// Reports to the previous front end are discarded with it.
void SoakDriver::ConnectAnew() {
    frontEnd.reset();
    frontEnd = std::make_unique<TestClient>(place.endpointName);
}

void SoakDriver::RunRound(std::size_t jobs) {
    ConnectAnew();
    const std::size_t target = ledger.Made() + jobs;
    while (ledger.Made() < target) {
        if (ledger.Count(IsWaiting) < queueLength) {
            EnqueueSome(std::min(mostJobsOfARequest, target - ledger.Made()));
        }
        FollowJobs();
    }
    FinishJobs();
    RunLastJob();
}

void SoakDriver::ShortenList(std::size_t rows) {
    std::vector<std::wstring> ids = ledger.Ids(IsOver);
    if (ids.size() > rows) {
        ids.resize(ids.size() - rows);
        frontEnd->Delete(ids);
        ledger.Told(frontEnd->NextUpdates(lookInterval));
    }
}

std::vector<JobListInfo> SoakDriver::CompareList() {
    std::vector<JobListInfo> listed = frontEnd->Jobs();
    ledger.Told(frontEnd->NextUpdates(milliseconds(0)));
    ledger.CompareAll(listed);
    return listed;
}

std::vector<std::string> SoakDriver::Problems() const {
    std::vector<std::string> all = problems;
    all.insert(all.end(), crowd.Problems().begin(), crowd.Problems().end());
    return all;
}

void SoakDriver::EnqueueSome(std::size_t most) {
    const JobKind& kind = DrawKind();
    Enqueue(kind, 1 + Draw(most), DrawScheduling(kind));
}

/// Predecessors are jobs that nobody deletes, because they have not been told to be over.
Scheduling SoakDriver::DrawScheduling(const JobKind& kind) {
    Scheduling scheduling;
    scheduling.priority = static_cast<std::int32_t>(Draw(5));
    scheduling.hold = Draw(10) == 0;
    scheduling.retries = static_cast<std::int32_t>(Draw(3));
    scheduling.retryOnlyAfterCrash = Draw(2) == 0;
    scheduling.timeLimit = !kind.end && Draw(2) == 0 ? 1 : 0;
    if (const std::wstring predecessor = DrawJob(IsNotOver); !predecessor.empty() && Draw(4) == 0) {
        scheduling.afterEnd = {predecessor};
    }
    return scheduling;
}

void SoakDriver::Enqueue(const JobKind& kind, std::size_t count, const Scheduling& scheduling) {
    ScheduledRequest request({}, scheduling);
    request.requestId = ledger.NewMark();
    request.extraText = request.requestId;
    request.scenario.id = text::FromUtf8(kind.name) + L".rb";
    request.inputFileSets.assign(count, {place.inputFile});
    // One directory per group of requests, because each job searches for a free name in it.
    request.outputDir = place.outputFolder + L"\\" + std::to_wstring(ledger.Made() / 200);
    const std::optional<JobStatus> end = scheduling.timeLimit > 0 ? JobStatus::Failed : kind.end;
    ledger.EnqueueAsked(request.requestId, count, JobLedger::UndisturbedEnd{kind.name, end});
    const JobEnqueueResult result = frontEnd->Enqueue(request);
    // Deletions reported before may have restarted the numbering.
    ledger.Told(frontEnd->NextUpdates(milliseconds(0)));
    ledger.EnqueueAcknowledged(request.requestId, result);
    ++done["enqueue requests"];
}

bool SoakDriver::Listen() {
    const std::vector<JobStatusInfo> updates = frontEnd->NextUpdates(lookInterval);
    ledger.Told(updates);
    silentLooks = updates.empty() ? silentLooks + 1 : 0;
    if (silentLooks > longestSilence) {
        throw std::runtime_error("the host tells nothing any more, and has not finished its jobs");
    }
    return !updates.empty();
}

void SoakDriver::FollowJobs() {
    if (Listen()) {
        PerformOne();
    } else {
        CancelWhatWaits();
        ReleaseAll();
    }
}

/// An ending front end may have sent requests that the host has not handled yet.
void SoakDriver::FinishJobs() {
    do {
        while (ledger.Count(IsNotOver) > 0) {
            FollowJobs();
        }
        crowd.EndAll();
        AwaitQuietHost();
        ledger.Told(frontEnd->NextUpdates(lookInterval));
    } while (ledger.Count(IsNotOver) > 0);
}

/// The function module keeps the handle of the last runner until its next call: each round ends with such a job.
void SoakDriver::RunLastJob() {
    Enqueue(JobKinds().front(), 1);
    while (ledger.Count(IsNotOver) > 0) {
        (void)Listen(); // throws if no more events arrive
    }
    AwaitQuietHost();
}

/// Nothing reports that a host has closed its end of a connection, so wait until its number of handles is stable. The
/// process of which runners are copies rests a while before it ends.
void SoakDriver::AwaitQuietHost() const {
    constexpr int enough = 6;
    constexpr int mostLooks = 300;
    int last = -1;
    for (int look = 0, same = 0; look < mostLooks && same < enough; ++look) {
        platform::WaitForAny({}, lookInterval);
        const int now = FiguresOf(place.host).handles;
        const bool isAlone = OnWindows() || test_support::ChildrenOf(platform::ProcessNumber(place.host)).empty();
        same = isAlone && now == last ? same + 1 : 0;
        last = now;
    }
}

void SoakDriver::PerformOne() {
    const std::vector<Action>& actions = Actions();
    const int all = std::accumulate(actions.begin(), actions.end(), 0,
                                    [](int sum, const Action& action) { return sum + action.weight; });
    auto drawn = static_cast<int>(Draw(static_cast<std::size_t>(all)));
    for (const Action& action : actions) {
        drawn -= action.weight;
        if (drawn < 0) {
            (this->*action.perform)();
            return;
        }
    }
}

void SoakDriver::CancelOne() {
    if (const std::wstring id = DrawJob(IsNotOver); !id.empty()) {
        ledger.Disturb(id);
        frontEnd->Cancel(id);
        ++done["jobs cancelled"];
    }
}

void SoakDriver::CancelAll() {
    for (const std::wstring& id : ledger.Ids(IsNotOver)) {
        ledger.Disturb(id);
    }
    frontEnd->Ask(L"CancelAllJobs", ControllerCSWrapper::Serialize(L"CancelAllJobs"), L"CancelJobsFinish");
    ++done["cancels of all jobs"];
}

void SoakDriver::CancelWhatWaits() {
    for (const std::wstring& id : ledger.Ids(RunsForEver)) {
        ledger.Disturb(id);
        frontEnd->Cancel(id);
        ++done["jobs cancelled"];
    }
}

void SoakDriver::HoldOne() {
    JobsEdit edit;
    edit.jobs = {DrawJob(IsWaiting)};
    edit.hold = true;
    frontEnd->Edit(edit);
    ++done["holds"];
}

void SoakDriver::ReleaseAll() {
    JobsEdit edit;
    edit.jobs = ledger.Ids(IsWaiting);
    edit.hold = false;
    frontEnd->Edit(edit);
    ++done["releases"];
}

void SoakDriver::DeleteSome() {
    std::vector<std::wstring> ids;
    for (std::size_t count = 1 + Draw(5); count > 0; --count) {
        if (const std::wstring id = DrawJob(IsOver); !id.empty()) {
            ids.push_back(id);
        }
    }
    frontEnd->Delete(ids);
    ++done["delete requests"];
}

void SoakDriver::AskForStatus() {
    const std::vector<std::wstring> ids{std::to_wstring(1 + Draw(1000)), DrawJob(IsOver), L"nobody"};
    frontEnd->Ask(L"CheckJobStatusRequest", ControllerCSWrapper::Serialize(L"CheckJobStatusRequest", ids),
                  L"CheckJobStatusResponse");
    ++done["status queries"];
}

void SoakDriver::AskForList() {
    frontEnd->Jobs();
    ++done["list queries"];
}

void SoakDriver::AskForScenarios() {
    frontEnd->Ask(L"FetchScenariosRequest", ControllerCSWrapper::Serialize(L"FetchScenariosRequest"),
                  L"FetchScenariosResponse");
    ++done["scenario queries"];
}

void SoakDriver::AskNonsense() {
    constexpr const wchar_t* names[] = {L"EnqueueJobs", L"CancelJobs", L"DeleteJobsRequest",
                                        L"ShowSettingDialogRequest"};
    constexpr const wchar_t* contents[] = {L"", L"{", L"[1,2,3]", L"{\"EnqueueJobs\":{\"scenario\":7}}"};
    frontEnd->Ask(names[Draw(std::size(names))], contents[Draw(std::size(contents))], L"RequestRefused");
    ++done["nonsense requests"];
}

void SoakDriver::KillRunner() {
    if (KillChildOf(platform::ProcessNumber(place.host))) {
        ++done["runners killed"];
    }
}

void SoakDriver::KillScenario() {
    const std::vector<std::uint32_t> runners = test_support::ChildrenOf(platform::ProcessNumber(place.host));
    if (!runners.empty() && KillChildOf(runners.front())) {
        ++done["scenarios killed"];
    }
}

bool SoakDriver::KillChildOf(std::uint32_t parent) {
    const std::vector<std::uint32_t> children = test_support::ChildrenOf(parent);
    if (children.empty()) {
        return false;
    }
    const platform::OwnedHandle child = test_support::OpenProcessByNumber(children.front());
    // The number may have been reused.
    const std::vector<std::uint32_t> still = test_support::ChildrenOf(parent);
    if (!child || still.empty() || still.front() != children.front() || !test_support::HasBegun(children.front())) {
        return false;
    }
    test_support::KillProcess(child.Get());
    // It belonged to a job that runs according to this list, or has ended.
    for (const JobListInfo& row : frontEnd->Jobs()) {
        if (!row.startTime.empty()) {
            ledger.Disturb(row.id);
        }
    }
    return true;
}

void SoakDriver::StartFrontEnd() {
    crowd.Start(place.frontEnd(DrawCommand()));
}

void SoakDriver::KillFrontEnd() {
    (void)crowd.KillOne(random); // there may be none
}

std::vector<std::wstring> SoakDriver::DrawCommand() {
    const std::wstring unfinished = DrawJob(IsNotOver);
    const std::wstring ended = DrawJob(IsOver);
    std::vector<std::vector<std::wstring>> commands{
        {L"cadjobs", L"list", L"-f"},
        {L"cadjobs", L"list", L"--json", L"-f"},
        {L"cadjobs", L"watch", L"-f"},
        {L"cadjobs", L"scenarios", L"-f"},
        {L"controller_cli", L"-f", L"-s", std::to_wstring(1 + Draw(1000))},
        {L"controller_cli", L"-f", L"-i", platform::ToNativeText(place.jobsFile)},
        {L"cadjobs", L"run", L"success.rb", platform::ToNativeText(place.inputFile), L"--output",
         platform::ToNativeText(place.outputFolder), L"-f"},
        {L"cadjobs", L"log", ended, L"-f"},
        {L"cadjobs", L"delete", ended, L"-f"},
        {L"cadjobs", L"wait", unfinished, L"-f"},
        {L"cadjobs", L"cancel", unfinished, L"-f"},
    };
    std::vector<std::wstring> command = commands[Draw(commands.size())];
    if (command[1] == L"cancel" && !unfinished.empty()) {
        ledger.Disturb(unfinished);
    }
    return command;
}

std::wstring SoakDriver::DrawJob(const JobLedger::Choice& choice) {
    const std::vector<std::wstring> ids = ledger.Ids(choice);
    return ids.empty() ? std::wstring() : ids[Draw(ids.size())];
}

const JobKind& SoakDriver::DrawKind() {
    const std::vector<JobKind>& kinds = JobKinds();
    const int all =
        std::accumulate(kinds.begin(), kinds.end(), 0, [](int sum, const JobKind& kind) { return sum + kind.weight; });
    auto drawn = static_cast<int>(Draw(static_cast<std::size_t>(all)));
    auto kind = kinds.begin();
    while ((drawn -= kind->weight) >= 0) {
        ++kind;
    }
    return *kind;
}

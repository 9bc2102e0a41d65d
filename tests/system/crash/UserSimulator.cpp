#include "system/crash/UserSimulator.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Messages.h"

#include <algorithm>
#include <iterator>

namespace crash {
namespace {

bool IsOver(const JobLedger::Job& job) {
    return IsFinal(job.told);
}

} // namespace

UserSimulator::UserSimulator(const CrashSite& crashSite, JobLedger& theLedger, const std::wstring& endpointName)
    : site(crashSite), ledger(theLedger),
      client(endpointName, [this](const std::vector<JobStatusInfo>& changes) { ledger.Told(changes); }) {}

bool UserSimulator::Ask(std::vector<JobListInfo>& list) {
    const auto content =
        client.TryAsk(L"InitJobsRequest", ControllerCSWrapper::Serialize(L"InitJobsRequest"), L"InitJobsResponse");
    if (content) {
        list = TestClient::Read<std::vector<JobListInfo>>(*content);
    }
    return content.has_value();
}

bool UserSimulator::RunJobs() {
    std::vector<std::wstring> ids;
    const std::wstring scenario = Draw(3) == 0 ? L"failing" : L"quick";
    Scheduling scheduling;
    scheduling.retries = Draw(1);
    return Enqueue(scenario, static_cast<std::size_t>(1 + Draw(1)), ids, scheduling) && AwaitEnd(ids.back());
}

bool UserSimulator::WatchProgress() {
    std::vector<std::wstring> ids;
    return Enqueue(L"reporting", 1, ids) &&
           AwaitStatus(ids.front(), [](const JobLedger::Job& job) { return job.toldProgress > 0; }) && Cancel(ids) &&
           AwaitEnd(ids.front());
}

bool UserSimulator::CancelJobs() {
    std::vector<std::wstring> ids;
    return Enqueue(L"waiting", static_cast<std::size_t>(1 + Draw(1)), ids) &&
           AwaitStatus(ids.front(), [](const JobLedger::Job& job) { return job.told == JobStatus::Running; }) &&
           Cancel(ids) && AwaitEnd(ids.front());
}

bool UserSimulator::CancelAllJobs() {
    const bool answered =
        client.TryAsk(L"CancelAllJobs", ControllerCSWrapper::Serialize(L"CancelAllJobs"), L"CancelJobsFinish")
            .has_value();
    return answered && AwaitEndOfAll();
}

bool UserSimulator::DeleteSome() {
    return (!SomeEndedJobs().empty() || RunJobs()) && Delete(SomeEndedJobs());
}

bool UserSimulator::DeleteAll() {
    const std::vector<std::wstring> ids = ledger.Ids([](const JobLedger::Job&) { return true; });
    return CancelAllJobs() && Delete(ids);
}

bool UserSimulator::DeleteLatest() {
    std::vector<std::wstring> ids;
    constexpr std::size_t most = 3;
    const std::vector<JobLedger::Job>& jobs = ledger.Jobs();
    for (auto job = jobs.rbegin(); job != jobs.rend() && ids.size() < most; ++job) {
        if (IsOver(*job)) {
            ids.push_back(job->id);
        }
    }
    return Delete(ids);
}

bool UserSimulator::LookAround() {
    std::vector<JobListInfo> list;
    const std::vector<std::wstring> names = {L"1", L"nobody"};
    return Ask(list) &&
           client.TryAsk(L"CheckJobStatusRequest", ControllerCSWrapper::Serialize(L"CheckJobStatusRequest", names),
                         L"CheckJobStatusResponse");
}

bool UserSimulator::HoldJobs() {
    std::vector<std::wstring> ids;
    Scheduling scheduling;
    scheduling.hold = true;
    return Enqueue(L"quick", static_cast<std::size_t>(1 + Draw(1)), ids, scheduling) && Release(ids) &&
           AwaitEnd(ids.back());
}

bool UserSimulator::FinishJobs() {
    std::vector<JobListInfo> list;
    if (!Ask(list)) {
        return false;
    }
    std::vector<std::wstring> endless;
    std::vector<std::wstring> others;
    for (const JobListInfo& job : list) {
        if (!IsFinal(job.status)) {
            (site.EndOf(job.scenario.id) ? others : endless).push_back(job.id);
        }
    }
    return (endless.empty() || Cancel(endless)) && (others.empty() || Release(others)) && AwaitEndOfAll();
}

bool UserSimulator::EndHost() {
    std::vector<std::wstring> ids;
    return Enqueue(L"waiting", 1, ids) &&
           client.TryAsk(L"TerminateRequest", ControllerCSWrapper::Serialize(L"TerminateRequest"),
                         L"TerminateResponse");
}

bool UserSimulator::AnyScene() {
    // Cheap scenes are repeated.
    static constexpr Scene scenes[] = {&UserSimulator::RunJobs,       &UserSimulator::RunJobs,
                                       &UserSimulator::WatchProgress, &UserSimulator::CancelJobs,
                                       &UserSimulator::DeleteSome,    &UserSimulator::DeleteSome,
                                       &UserSimulator::CancelAllJobs, &UserSimulator::LookAround,
                                       &UserSimulator::DeleteAll,     &UserSimulator::HoldJobs};
    return (this->*scenes[Draw(static_cast<int>(std::size(scenes)) - 1)])();
}

void UserSimulator::AskAndLeave() {
    switch (Draw(2)) {
    case 0:
        client.Send(L"EnqueueJobs", MakeEnqueue(L"waiting", 2).text);
        break;
    case 1: {
        const std::vector<std::wstring> ids = SomeEndedJobs();
        ledger.DeletionAsked(ids);
        client.Send(L"DeleteJobsRequest", ControllerCSWrapper::Serialize(L"DeleteJobsRequest", ids));
        break;
    }
    default:
        client.Send(L"EnqueueJobs", MakeEnqueue(L"quick", 1).text);
        client.Send(L"CancelAllJobs", ControllerCSWrapper::Serialize(L"CancelAllJobs"));
    }
}

int UserSimulator::Draw(int most) {
    // Not a distribution of the standard library: its results differ between the systems.
    return static_cast<int>(random() % static_cast<std::uint64_t>(most + 1));
}

void UserSimulator::Seed(std::uint64_t seed, std::uint64_t round) {
    std::seed_seq sequence{seed, round};
    random.seed(sequence);
}

UserSimulator::Request UserSimulator::MakeEnqueue(const std::wstring& scenario, std::size_t jobs,
                                                  const Scheduling& scheduling) {
    ScheduledRequest info({}, scheduling);
    info.requestId = ledger.NewMark();
    info.extraText = info.requestId;
    info.inputFileSets.assign(jobs, {site.Input()});
    info.scenario.id = site.Scenario(scenario);
    info.outputDir = site.Output();
    ledger.EnqueueAsked(info.requestId, jobs);
    return {info.requestId, messages::Serialize(events::enqueueJobs, info)};
}

bool UserSimulator::Enqueue(const std::wstring& scenario, std::size_t jobs, std::vector<std::wstring>& ids,
                            const Scheduling& scheduling) {
    const Request request = MakeEnqueue(scenario, jobs, scheduling);
    const auto content = client.TryAsk(L"EnqueueJobs", request.text, L"EnqueueJobsFinish");
    if (!content) {
        return false;
    }
    const auto result = TestClient::Read<JobEnqueueResult>(*content);
    ledger.EnqueueAcknowledged(request.mark, result);
    std::transform(result.jobIds.begin(), result.jobIds.end(), std::back_inserter(ids),
                   [](const JobIdInfo& job) { return job.id; });
    return true;
}

bool UserSimulator::Cancel(const std::vector<std::wstring>& ids) {
    return client.TryAsk(L"CancelJobs", ControllerCSWrapper::Serialize(L"CancelJobs", ids), L"CancelJobsFinish")
        .has_value();
}

bool UserSimulator::Release(const std::vector<std::wstring>& ids) {
    JobsEdit edit;
    edit.jobs = ids;
    edit.hold = false;
    return client.TryAsk(L"EditJobsRequest", messages::Serialize(events::editJobsRequest, edit), L"EditJobsFinish")
        .has_value();
}

bool UserSimulator::Delete(const std::vector<std::wstring>& ids) {
    ledger.DeletionAsked(ids);
    const auto content = client.TryAsk(L"DeleteJobsRequest", ControllerCSWrapper::Serialize(L"DeleteJobsRequest", ids),
                                       L"DeleteJobsResponse");
    if (!content) {
        return false;
    }
    ledger.DeletionAcknowledged(TestClient::Read<std::vector<std::wstring>>(*content));
    return true;
}

bool UserSimulator::AwaitStatus(const std::wstring& id, const std::function<bool(const JobLedger::Job&)>& isReached) {
    return client.AwaitChanges([&] { return IsOver(ledger.JobOf(id)) || isReached(ledger.JobOf(id)); });
}

bool UserSimulator::AwaitEnd(const std::wstring& id) {
    return client.AwaitChanges([&] { return IsOver(ledger.JobOf(id)); });
}

bool UserSimulator::AwaitEndOfAll() {
    return client.AwaitChanges([&] { return std::all_of(ledger.Jobs().begin(), ledger.Jobs().end(), IsOver); });
}

std::vector<std::wstring> UserSimulator::SomeEndedJobs() {
    std::vector<std::wstring> ids;
    for (const JobLedger::Job& job : ledger.Jobs()) {
        if (IsOver(job) && Draw(1) == 0 && ids.size() < 3) {
            ids.push_back(job.id);
        }
    }
    if (ids.empty() && !ledger.Jobs().empty() && IsOver(ledger.Jobs().front())) {
        ids.push_back(ledger.Jobs().front().id);
    }
    return ids;
}

} // namespace crash

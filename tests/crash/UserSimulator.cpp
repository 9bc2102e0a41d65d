#include "crash/UserSimulator.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "text/Text.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace crash {
namespace {

bool HasEnded(const Ledger::Job& job) {
    return job.told != JobStatus::Queued && job.told != JobStatus::Running && job.told != JobStatus::Canceling;
}

template <class Value>
void Read(const std::wstring& content, Value& value) {
    if (!ControllerCSWrapper::Deserialize(content, value)) {
        throw std::runtime_error("cannot read " + text::ToUtf8(content));
    }
}

} // namespace

UserSimulator::UserSimulator(const CrashSite& crashSite, Ledger& theLedger, const std::wstring& endpointName)
    : site(crashSite), ledger(theLedger),
      conversation(endpointName, [this](const std::vector<JobStatusInfo>& changes) { ledger.Told(changes); }) {}

bool UserSimulator::Ask(std::vector<JobListInfo>& list) {
    const auto content =
        conversation.Ask(L"InitJobsRequest", ControllerCSWrapper::Serialize(L"InitJobsRequest"), L"InitJobsResponse");
    if (content) {
        Read(*content, list);
    }
    return content.has_value();
}

bool UserSimulator::RunJobs() {
    std::vector<std::wstring> ids;
    const std::wstring scenario = Draw(3) == 0 ? L"failing" : L"quick";
    return Enqueue(scenario, static_cast<std::size_t>(1 + Draw(1)), ids) && AwaitEnd(ids.back());
}

bool UserSimulator::WatchProgress() {
    std::vector<std::wstring> ids;
    return Enqueue(L"reporting", 1, ids) &&
           AwaitStatus(ids.front(), [](const Ledger::Job& job) { return job.toldProgress > 0; }) && Cancel(ids) &&
           AwaitEnd(ids.front());
}

bool UserSimulator::CancelJobs() {
    std::vector<std::wstring> ids;
    return Enqueue(L"waiting", static_cast<std::size_t>(1 + Draw(1)), ids) &&
           AwaitStatus(ids.front(), [](const Ledger::Job& job) { return job.told == JobStatus::Running; }) &&
           Cancel(ids) && AwaitEnd(ids.front());
}

bool UserSimulator::CancelAllJobs() {
    const bool answered =
        conversation.Ask(L"CancelAllJobs", ControllerCSWrapper::Serialize(L"CancelAllJobs"), L"CancelJobsFinish")
            .has_value();
    return answered && AwaitEndOfAll();
}

bool UserSimulator::DeleteSome() {
    return (!SomeEndedJobs().empty() || RunJobs()) && Delete(SomeEndedJobs());
}

bool UserSimulator::DeleteAll() {
    std::vector<std::wstring> ids;
    std::transform(ledger.Jobs().begin(), ledger.Jobs().end(), std::back_inserter(ids),
                   [](const Ledger::Job& job) { return job.id; });
    return CancelAllJobs() && Delete(ids);
}

bool UserSimulator::DeleteLatest() {
    std::vector<std::wstring> ids;
    constexpr std::size_t most = 3;
    const std::vector<Ledger::Job>& jobs = ledger.Jobs();
    for (auto job = jobs.rbegin(); job != jobs.rend() && ids.size() < most; ++job) {
        if (HasEnded(*job)) {
            ids.push_back(job->id);
        }
    }
    return Delete(ids);
}

bool UserSimulator::LookAround() {
    std::vector<JobListInfo> list;
    const std::vector<std::wstring> names = {L"1", L"nobody"};
    return Ask(list) &&
           conversation.Ask(L"CheckJobStatusRequest", ControllerCSWrapper::Serialize(L"CheckJobStatusRequest", names),
                            L"CheckJobStatusResponse");
}

bool UserSimulator::EndHost() {
    std::vector<std::wstring> ids;
    return Enqueue(L"waiting", 1, ids) &&
           conversation.Ask(L"TerminateRequest", ControllerCSWrapper::Serialize(L"TerminateRequest"),
                            L"TerminateResponse");
}

bool UserSimulator::AnyScene() {
    // What costs nothing is done more often.
    static constexpr Scene scenes[] = {
        &UserSimulator::RunJobs,       &UserSimulator::RunJobs,    &UserSimulator::WatchProgress,
        &UserSimulator::CancelJobs,    &UserSimulator::DeleteSome, &UserSimulator::DeleteSome,
        &UserSimulator::CancelAllJobs, &UserSimulator::LookAround, &UserSimulator::DeleteAll};
    return (this->*scenes[Draw(static_cast<int>(std::size(scenes)) - 1)])();
}

void UserSimulator::AskAndLeave() {
    switch (Draw(2)) {
    case 0:
        conversation.Send(L"EnqueueJobs", MakeEnqueue(L"waiting", 2).text);
        break;
    case 1: {
        const std::vector<std::wstring> ids = SomeEndedJobs();
        ledger.DeletionAsked(ids);
        conversation.Send(L"DeleteJobsRequest", ControllerCSWrapper::Serialize(L"DeleteJobsRequest", ids));
        break;
    }
    default:
        conversation.Send(L"EnqueueJobs", MakeEnqueue(L"quick", 1).text);
        conversation.Send(L"CancelAllJobs", ControllerCSWrapper::Serialize(L"CancelAllJobs"));
    }
}

int UserSimulator::Draw(int most) {
    // Not a distribution of the library: its results differ between the systems.
    return static_cast<int>(random() % static_cast<std::uint64_t>(most + 1));
}

void UserSimulator::Seed(std::uint64_t seed, std::uint64_t round) {
    std::seed_seq sequence{seed, round};
    random.seed(sequence);
}

UserSimulator::Request UserSimulator::MakeEnqueue(const std::wstring& scenario, std::size_t jobs) {
    EnqueueJobsInfo info;
    info.requestId = ledger.NewMark();
    info.extraText = info.requestId;
    info.inputFileSets.assign(jobs, {site.Input()});
    info.scenario.id = site.Scenario(scenario);
    info.outputDir = site.Output();
    ledger.EnqueueAsked(info.requestId, jobs);
    return {info.requestId, ControllerCSWrapper::Serialize(L"EnqueueJobs", info)};
}

bool UserSimulator::Enqueue(const std::wstring& scenario, std::size_t jobs, std::vector<std::wstring>& ids) {
    const Request request = MakeEnqueue(scenario, jobs);
    const auto content = conversation.Ask(L"EnqueueJobs", request.text, L"EnqueueJobsFinish");
    if (!content) {
        return false;
    }
    JobEnqueueResult result;
    Read(*content, result);
    ledger.EnqueueAcknowledged(request.mark, result);
    std::transform(result.jobIds.begin(), result.jobIds.end(), std::back_inserter(ids),
                   [](const JobIdInfo& job) { return job.id; });
    return true;
}

bool UserSimulator::Cancel(const std::vector<std::wstring>& ids) {
    return conversation.Ask(L"CancelJobs", ControllerCSWrapper::Serialize(L"CancelJobs", ids), L"CancelJobsFinish")
        .has_value();
}

bool UserSimulator::Delete(const std::vector<std::wstring>& ids) {
    ledger.DeletionAsked(ids);
    const auto content = conversation.Ask(
        L"DeleteJobsRequest", ControllerCSWrapper::Serialize(L"DeleteJobsRequest", ids), L"DeleteJobsResponse");
    if (!content) {
        return false;
    }
    std::vector<std::wstring> deleted;
    Read(*content, deleted);
    ledger.DeletionAcknowledged(deleted);
    return true;
}

bool UserSimulator::AwaitStatus(const std::wstring& id, const std::function<bool(const Ledger::Job&)>& isReached) {
    return conversation.AwaitChanges([&] { return HasEnded(ledger.JobOf(id)) || isReached(ledger.JobOf(id)); });
}

bool UserSimulator::AwaitEnd(const std::wstring& id) {
    return conversation.AwaitChanges([&] { return HasEnded(ledger.JobOf(id)); });
}

bool UserSimulator::AwaitEndOfAll() {
    return conversation.AwaitChanges([&] { return std::all_of(ledger.Jobs().begin(), ledger.Jobs().end(), HasEnded); });
}

std::vector<std::wstring> UserSimulator::SomeEndedJobs() {
    std::vector<std::wstring> ids;
    for (const Ledger::Job& job : ledger.Jobs()) {
        if (HasEnded(job) && Draw(1) == 0 && ids.size() < 3) {
            ids.push_back(job.id);
        }
    }
    if (ids.empty() && !ledger.Jobs().empty() && HasEnded(ledger.Jobs().front())) {
        ids.push_back(ledger.Jobs().front().id);
    }
    return ids;
}

} // namespace crash

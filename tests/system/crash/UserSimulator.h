#pragma once

#include "formats/Scheduling.h"
#include "kit/JobLedger.h"
#include "kit/TestClient.h"
#include "system/crash/CrashSite.h"

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace crash {

/// Simulates a user in scenes, in each of which the host may die. Acknowledged operations are recorded in the ledger.
class UserSimulator {
public:
    using Scene = bool (UserSimulator::*)();

    UserSimulator(const CrashSite& site, JobLedger& ledger, const std::wstring& endpointName);

    /// False if the host died, here and in all scenes.
    [[nodiscard]] bool Meet() { return client.Meet(site.Host()); }
    /// Requests the host's list.
    [[nodiscard]] bool Ask(std::vector<JobListInfo>& list);

    [[nodiscard]] bool RunJobs();
    [[nodiscard]] bool WatchProgress();
    [[nodiscard]] bool CancelJobs();
    [[nodiscard]] bool CancelAllJobs();
    [[nodiscard]] bool DeleteSome();
    [[nodiscard]] bool DeleteAll();
    /// Deletes the job that ended last; its processes may still exist.
    [[nodiscard]] bool DeleteLatest();
    [[nodiscard]] bool LookAround();
    /// Releases, edits and runs jobs that wait on hold.
    [[nodiscard]] bool HoldJobs();
    /// Cancels the jobs that do not end by themselves, releases the others and waits for their ends.
    [[nodiscard]] bool FinishJobs();
    /// Asks the host to end and waits for it.
    [[nodiscard]] bool EndHost();
    /// Any scene above but the last.
    [[nodiscard]] bool AnyScene();

    /// Sends a request and disconnects before the response.
    void AskAndLeave();
    /// Reads the last events of a dead host.
    void HearLastWords() { client.HearLastWords(); }

    /// A number from 0 to `most`, determined by the seed of the round.
    int Draw(int most);
    void Seed(std::uint64_t seed, std::uint64_t round);

private:
    struct Request {
        std::wstring mark;
        std::wstring text;
    };
    Request MakeEnqueue(const std::wstring& scenario, std::size_t jobs, const Scheduling& scheduling = {});
    [[nodiscard]] bool Enqueue(const std::wstring& scenario, std::size_t jobs, std::vector<std::wstring>& ids,
                               const Scheduling& scheduling = {});
    [[nodiscard]] bool Release(const std::vector<std::wstring>& ids);
    [[nodiscard]] bool Cancel(const std::vector<std::wstring>& ids);
    [[nodiscard]] bool Delete(const std::vector<std::wstring>& ids);
    [[nodiscard]] bool AwaitStatus(const std::wstring& id, const std::function<bool(const JobLedger::Job&)>& isReached);
    [[nodiscard]] bool AwaitEnd(const std::wstring& id);
    [[nodiscard]] bool AwaitEndOfAll();
    std::vector<std::wstring> SomeEndedJobs();

    const CrashSite& site;
    JobLedger& ledger;
    TestClient client;
    std::mt19937_64 random;
};

} // namespace crash

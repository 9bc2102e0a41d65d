#pragma once

#include "crash/CrashSite.h"
#include "kit/JobLedger.h"
#include "kit/TestClient.h"

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace crash {

/// What a user does with a host: scenes, in each of which the host may die. What is acknowledged goes into the ledger.
class UserSimulator {
public:
    using Scene = bool (UserSimulator::*)();

    UserSimulator(const CrashSite& site, JobLedger& ledger, const std::wstring& endpointName);

    /// False when the host died, here and in all scenes.
    [[nodiscard]] bool Meet() { return client.Meet(site.Host()); }
    /// The host's list.
    [[nodiscard]] bool Ask(std::vector<JobListInfo>& list);

    [[nodiscard]] bool RunJobs();
    [[nodiscard]] bool WatchProgress();
    [[nodiscard]] bool CancelJobs();
    [[nodiscard]] bool CancelAllJobs();
    [[nodiscard]] bool DeleteSome();
    [[nodiscard]] bool DeleteAll();
    /// What has ended last: processes of it may still be about.
    [[nodiscard]] bool DeleteLatest();
    [[nodiscard]] bool LookAround();
    /// Asks the host to end, which it does.
    [[nodiscard]] bool EndHost();
    /// Any of the above but the last.
    [[nodiscard]] bool AnyScene();

    /// Sends a request and leaves before it is answered.
    void AskAndLeave();
    /// Takes in what a host that has died said last.
    void HearLastWords() { client.HearLastWords(); }

    /// A whole number from 0 to `most`, as the round's seed has it.
    int Draw(int most);
    void Seed(std::uint64_t seed, std::uint64_t round);

private:
    struct Request {
        std::wstring mark;
        std::wstring text;
    };
    Request MakeEnqueue(const std::wstring& scenario, std::size_t jobs);
    [[nodiscard]] bool Enqueue(const std::wstring& scenario, std::size_t jobs, std::vector<std::wstring>& ids);
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

#pragma once

#include "kit/JobLedger.h"
#include "kit/TestClient.h"
#include "platform/processes/Process.h"
#include "system/soak/FrontEndCrowd.h"
#include "system/soak/JobKinds.h"

#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

/// What the driver needs to know about its host.
struct SoakPlace {
    std::wstring endpointName;
    void* host = nullptr;
    /// The host's scenario directory contains a scenario file for each kind of job.
    std::wstring inputFile;
    std::wstring outputFolder;
    /// The path of a jobs file with successful jobs.
    std::wstring jobsFile;
    /// The command that starts the command-line front end.
    std::function<platform::ProcessStart(const std::vector<std::wstring>& arguments)> frontEnd;
};

/// Keeps a host busy with jobs and requests under faults: jobs are cancelled and deleted, and runners, scenarios and
/// front ends are killed. The seed decides what happens next; the time depends on the machine.
class SoakDriver {
public:
    SoakDriver(SoakPlace soakPlace, unsigned seed);

    /// Runs this many jobs to their ends; afterwards only this front end is connected, and no job runs.
    void RunRound(std::size_t jobs);
    /// Deletes jobs until `rows` are listed. Call between rounds.
    void ShortenList(std::size_t rows);
    /// The host's list; differences from its reports are problems.
    std::vector<JobListInfo> CompareList();
    void EndHost() { frontEnd->Terminate(); }

    const JobLedger& Jobs() const { return ledger; }
    const FrontEndCrowd& FrontEnds() const { return crowd; }
    /// The count of each operation.
    const std::map<std::string, int>& Done() const { return done; }
    std::vector<std::string> Problems() const;

private:
    struct Action {
        const char* name;
        int weight;
        void (SoakDriver::*perform)();
    };
    static const std::vector<Action>& Actions();

    void ConnectAnew();
    void EnqueueSome(std::size_t most);
    /// Reads events of the host for a moment; true if there were any. Throws if the host stays silent.
    [[nodiscard]] bool Listen();
    /// Reads events of the host; performs an operation after each, and cancels jobs that never end if there are none.
    void FollowJobs();
    void FinishJobs();
    void RunLastJob();
    void AwaitQuietHost() const;
    void PerformOne();

    void CancelOne();
    void CancelAll();
    void CancelWhatWaits();
    void HoldOne();
    void ReleaseAll();
    void DeleteSome();
    void AskForStatus();
    void AskForList();
    void AskForScenarios();
    void AskNonsense();
    void KillRunner();
    void KillScenario();
    void StartFrontEnd();
    void KillFrontEnd();

    /// Kills the first child of a process; true if it had one.
    [[nodiscard]] bool KillChildOf(std::uint32_t parent);
    std::size_t Draw(std::size_t count) { return random() % count; }
    /// A random matching job; empty if there is none.
    std::wstring DrawJob(const JobLedger::Choice& choice);
    const JobKind& DrawKind();
    void Enqueue(const JobKind& kind, std::size_t count, const Scheduling& scheduling = {});
    Scheduling DrawScheduling(const JobKind& kind);
    std::vector<std::wstring> DrawCommand();

    const SoakPlace place;
    std::mt19937 random;
    std::unique_ptr<TestClient> frontEnd;
    std::vector<std::string> problems;
    JobLedger ledger{JobLedger::Others::Some, [this](const std::string& problem) { problems.push_back(problem); }};
    FrontEndCrowd crowd;
    std::map<std::string, int> done;
    int silentLooks = 0;
};

#pragma once

#include "FrontEndCrowd.h"
#include "JobKinds.h"
#include "kit/JobLedger.h"
#include "kit/TestClient.h"
#include "platform/processes/Process.h"

#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

/// What the driver needs to know of the host that it keeps busy.
struct SoakPlace {
    std::wstring endpointName;
    void* host = nullptr;
    /// A scenario file for each kind of job stands in the host's scenario directory.
    std::wstring inputFile;
    std::wstring outputFolder;
    /// The path of a jobs file with jobs that succeed.
    std::wstring jobsFile;
    /// How to start the command-line front end.
    std::function<platform::ProcessStart(const std::vector<std::wstring>& arguments)> frontEnd;
};

/// Keeps a host busy with jobs and requests, and lets go wrong what can go wrong around it: jobs are cancelled and
/// deleted, runners, scenarios and front ends ended by force. What comes next is drawn from the seed; when it comes
/// depends on the machine.
class SoakDriver {
public:
    SoakDriver(SoakPlace soakPlace, unsigned seed);

    /// Has so many jobs made and carried to their ends; then no front end is connected but this one, and nothing runs.
    void RunRound(std::size_t jobs);
    /// Deletes jobs until so many are listed. Between rounds.
    void ShortenList(std::size_t rows);
    /// The list as the host tells it; what differs from what it told of its jobs is a problem.
    std::vector<JobListInfo> CompareList();
    void EndHost() { frontEnd->Terminate(); }

    const JobLedger& Jobs() const { return ledger; }
    const FrontEndCrowd& FrontEnds() const { return crowd; }
    /// How often each thing was done.
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
    /// Hears what the host tells, for a moment; true when it told anything. One that never does again throws.
    [[nodiscard]] bool Listen();
    /// Hears what the host tells, does something to it when it tells anything, and cancels what would run for ever
    /// when it does not.
    void FollowJobs();
    void FinishJobs();
    void RunLastJob();
    void AwaitQuietHost() const;
    void PerformOne();

    void CancelOne();
    void CancelAll();
    void CancelWhatWaits();
    void DeleteSome();
    void AskForStatus();
    void AskForList();
    void AskForScenarios();
    void AskNonsense();
    void KillRunner();
    void KillScenario();
    void StartFrontEnd();
    void KillFrontEnd();

    /// Ends the first child of a process by force; true when it had one.
    [[nodiscard]] bool KillChildOf(std::uint32_t parent);
    std::size_t Draw(std::size_t count) { return random() % count; }
    /// A job that fits, drawn; empty when none does.
    std::wstring DrawJob(const JobLedger::Choice& choice);
    const JobKind& DrawKind();
    void Enqueue(const JobKind& kind, std::size_t count);
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

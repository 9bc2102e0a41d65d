#include "system/crash/DiskState.h"
#include "system/crash/UserSimulator.h"

#include "kit/local_socket/EndpointNames.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <iterator>
#include <memory>
#include <numeric>

#include <gtest/gtest.h>

namespace {

using namespace crash;
using fault_points::FaultPoint;

/// The number of hosts that use one data directory, so that damage adds up and is found.
constexpr std::uint64_t mostRoundsInADirectory = 25;
/// What hosts do with the jobs of earlier ones: one rule a directory, in turn.
struct RestartRule {
    JobLedger::Restart rule;
    const char* setting;
};
constexpr RestartRule restartRules[] = {{JobLedger::Restart::Cancel, "cancel"},
                                        {JobLedger::Restart::KeepWaiting, "queued"},
                                        {JobLedger::Restart::RunAgain, "all"}};
/// The number of additional rounds, per turn through all fault points, in which a host is killed from outside.
constexpr std::size_t roundsFromOutside = 8;
/// A run of this length must hit every fault point.
constexpr std::size_t wholeRun = 1000;

std::uint64_t Setting(const wchar_t* name, std::uint64_t otherwise) {
    const auto text = platform::GetEnvironment(name);
    return text ? std::stoull(*text) : otherwise;
}

bool IsReachedAtStart(FaultPoint point) {
    return point == FaultPoint::ListRead || point == FaultPoint::PlaceTaken || point == FaultPoint::LeftoversStopped ||
           point == FaultPoint::EngineMade || point == FaultPoint::HostReady;
}

/// The scene that leads to a point.
UserSimulator::Scene SceneFor(FaultPoint point) {
    switch (point) {
    case FaultPoint::EntryRemoved:
    case FaultPoint::DeletionBegun:
    case FaultPoint::WorkDirectoryRemoved:
    case FaultPoint::DeletionsDone:
    case FaultPoint::DeletionsListed:
    case FaultPoint::DeletionsNoted:
    case FaultPoint::DeletionsToBeSettled:
    case FaultPoint::DeletionsSettled:
        return &UserSimulator::DeleteSome;
    case FaultPoint::ProgressSeen:
        return &UserSimulator::WatchProgress;
    case FaultPoint::CancelStatusChanged:
    case FaultPoint::CancelModuleCalled:
    case FaultPoint::KillFileMade:
    case FaultPoint::CancelsDone:
    case FaultPoint::CancelsListed:
        return &UserSimulator::CancelJobs;
    case FaultPoint::JournalEnded:
    case FaultPoint::JobsCancelledAtEnd:
    case FaultPoint::HostEnds:
        return &UserSimulator::EndHost;
    case FaultPoint::AnswerToBeSent:
    case FaultPoint::AnswerSent:
        return &UserSimulator::AnyScene;
    default:
        return &UserSimulator::RunJobs;
    }
}

/// Points that are passed often are hit at different passes.
int MostPasses(FaultPoint point) {
    return point <= FaultPoint::FileRenamed ? 8 : point == FaultPoint::EntryRemoved ? 5 : 2;
}

/// The order of the fault points in one turn; values beyond the last point mean a kill from outside.
std::vector<std::size_t> ShuffledTurn(std::uint64_t seed, std::uint64_t turn) {
    std::vector<std::size_t> order(faultPointCount + roundsFromOutside);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::seed_seq sequence{seed, turn};
    std::mt19937_64 random(sequence);
    for (std::size_t last = order.size() - 1; last > 0; --last) {
        std::swap(order[last], order[random() % (last + 1)]);
    }
    return order;
}

/// Runs hosts in succession in one data directory.
class Directory {
public:
    Directory(std::uint64_t runSeed, const RestartRule& restart, CrashCounts& runCounts)
        : seed(runSeed), counts(runCounts), endpointName(text::FromUtf8(NewEndpointName())),
          site(endpointName, restart.setting),
          ledger(
              JobLedger::Others::None, [](const std::string& problem) { ADD_FAILURE() << problem; }, restart.rule),
          user(site, ledger, endpointName) {}

    ~Directory() {
        counts.jobsAcknowledged += ledger.AcknowledgedJobs();
        counts.deletionsAcknowledged += ledger.AcknowledgedDeletions();
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    /// One host from its start to its kill.
    void Round(std::uint64_t round) {
        user.Seed(seed, round);
        constexpr std::uint64_t turnLength = faultPointCount + roundsFromOutside;
        const std::size_t choice = ShuffledTurn(seed, round / turnLength)[round % turnLength];
        if (choice < faultPointCount) {
            const auto point = static_cast<FaultPoint>(choice);
            DieAt({point, 1 + user.Draw(MostPasses(point) - 1)});
        } else {
            DieFromOutside();
        }
    }

    /// Runs two more hosts, which check the state left by the last one and end normally: the second finds nothing to
    /// repair.
    void LookOnceMore() {
        for (int host = 0; host < 2; ++host) {
            ASSERT_TRUE(StartAndExamine()) << "a host without a fault has died";
            ASSERT_TRUE(user.EndHost());
            Bury();
            ++counts.endedAsAsked;
        }
        ExpectNothingNoted(site);
    }

    std::string EndOfLog() const { return site.EndOfLog(); }

private:
    /// Some faults are armed before the start, and may hit the host while it recovers.
    void DieAt(const Fault& fault) {
        const bool isArmedFirst = IsReachedAtStart(fault.point) || user.Draw(4) == 0;
        if (isArmedFirst) {
            site.Arm({fault.point, 1});
        }
        bool isAlive = StartAndExamine() && (user.Draw(1) == 0 || user.AnyScene());
        if (!isArmedFirst) {
            site.Arm(fault);
        }
        isAlive = isAlive && (user.*SceneFor(fault.point))();
        constexpr int mostScenes = 6;
        for (int scene = 1; isAlive && scene < mostScenes && site.HostLives(); ++scene) {
            isAlive = user.AnyScene();
        }
        const bool isStruck = !isAlive || AwaitFault(fault.point);
        if (!isStruck) {
            site.KillHost();
        }
        Bury();
        ++(isStruck ? counts.struck[static_cast<std::size_t>(fault.point)] : counts.notReached);
    }

    /// A host that was asked to end runs until the fault; work after the last scene may also hit it.
    bool AwaitFault(FaultPoint point) {
        if (SceneFor(point) == &UserSimulator::EndHost) {
            site.AwaitHostEnd();
        }
        constexpr std::chrono::milliseconds aMoment{5};
        return platform::WaitForAny({site.Host()}, aMoment).has_value();
    }

    void DieFromOutside() {
        if (!StartAndExamine() || (user.Draw(1) == 0 && !user.AnyScene())) {
            ADD_FAILURE() << "a host without a fault has died";
            return;
        }
        if (user.Draw(3) > 0) {
            user.AskAndLeave();
            platform::WaitForAny({site.Host()}, std::chrono::milliseconds(user.Draw(40)));
        }
        site.KillHost();
        Bury();
        ++counts.killedFromOutside;
    }

    /// A request sent before the disconnection is noticed would be lost, not sent to the next host.
    void Bury() {
        site.AwaitHostEnd();
        user.HearLastWords();
        site.Disarm();
    }

    /// Checks the state left by the last host, without a host and through a new one; false if the new one died.
    bool StartAndExamine() {
        const std::vector<JobListInfo> before = ReadList(site, counts);
        ledger.Compare(before);
        std::vector<JobListInfo> list;
        const bool isReady = site.StartHost();
        ++counts.hostsStarted;
        if (!isReady || !user.Meet() || !user.Ask(list)) {
            return false;
        }
        ledger.Compare(list);
        ledger.Adopt(list);
        counts.jobsCompared += list.size();
        ExpectRestartRule(ledger, before, list);
        if (!user.FinishJobs() || !user.Ask(list)) {
            return false;
        }
        ExpectKeptJobsRan(site, ledger, before, list);
        ExpectNoActiveJob(list);
        if (user.Draw(2) == 0 && !user.DeleteLatest()) {
            return false;
        }
        return ExamineDirectory();
    }

    bool ExamineDirectory() {
        AwaitEndOfScenarios(site, counts);
        std::vector<JobListInfo> list;
        if (!user.Ask(list)) {
            return false;
        }
        ledger.Compare(list);
        CompareWorkDirectories(site, list, counts);
        ExpectNoStrayFiles(site);
        return true;
    }

    const std::uint64_t seed;
    CrashCounts& counts;
    const std::wstring endpointName;
    CrashSite site;
    JobLedger ledger;
    UserSimulator user;
};

/// Runs the rounds of one data directory from `first` on. Returns the number of the next round.
std::uint64_t RunDirectory(std::uint64_t seed, std::uint64_t first, std::size_t kills, CrashCounts& counts) {
    // A short run also uses each rule.
    const std::uint64_t rounds = std::clamp<std::uint64_t>(kills / std::size(restartRules), 1, mostRoundsInADirectory);
    Directory directory(seed, restartRules[first / rounds % std::size(restartRules)], counts);
    std::uint64_t round = first;
    try {
        for (; round < first + rounds && counts.Kills() < kills && !testing::Test::HasFailure(); ++round) {
            directory.Round(round);
        }
        if (!testing::Test::HasFailure()) {
            directory.LookOnceMore();
        }
    } catch (const std::exception& failure) {
        ADD_FAILURE() << failure.what();
    }
    if (testing::Test::HasFailure()) {
        std::cout << "Up to round " << round << ", in a folder of its own since round " << first << ", with the seed "
                  << seed << ". The log ends so:\n"
                  << directory.EndOfLog();
    }
    return round;
}

TEST(CrashMatrixTest, HostsThatAreKilledLoseNothingAndLeaveNothingBehind) {
    const std::size_t kills = Setting(L"CRASH_KILLS", 50);
    const std::uint64_t seed = Setting(L"CRASH_SEED", 1);
    std::uint64_t round = Setting(L"CRASH_FIRST_ROUND", 0);
    CrashCounts counts;
    while (counts.Kills() < kills && !HasFailure()) {
        round = RunDirectory(seed, round, kills, counts);
    }
    std::cout << "Seed " << seed << "\n" << counts.Table();
    EXPECT_TRUE(kills < wholeRun || counts.NeverStruck().empty()) << "never struck: " << counts.NeverStruck();
}

} // namespace

#include "crash/DiskState.h"
#include "crash/UserSimulator.h"

#include "local_socket/support/EndpointNames.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <numeric>

#include <gtest/gtest.h>

namespace {

using namespace crash;
using fault_points::FaultPoint;

/// How many hosts die in one data directory before the next begins afresh: damage is to add up and be seen.
constexpr std::uint64_t roundsInADirectory = 25;
/// Of so many rounds as there are fault points, so many more end from outside.
constexpr std::size_t roundsFromOutside = 8;
/// A run of this length must come by every fault point.
constexpr std::size_t wholeRun = 1000;

std::uint64_t Setting(const wchar_t* name, std::uint64_t otherwise) {
    const auto text = platform::GetEnvironment(name);
    return text ? std::stoull(*text) : otherwise;
}

bool IsReachedAtStart(FaultPoint point) {
    return point == FaultPoint::ListRead || point == FaultPoint::PlaceTaken || point == FaultPoint::LeftoversStopped ||
           point == FaultPoint::EngineMade || point == FaultPoint::HostReady;
}

/// What leads to a point.
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

/// Points that are passed often are struck at different passes.
int MostPasses(FaultPoint point) {
    return point <= FaultPoint::FileRenamed ? 8 : point == FaultPoint::EntryRemoved ? 5 : 2;
}

/// The order of the fault points in one turn through all of them; what is no point ends from outside.
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

/// Hosts that die in one data directory, one after another.
class Directory {
public:
    Directory(std::uint64_t runSeed, CrashCounts& runCounts)
        : seed(runSeed), counts(runCounts), endpointName(text::FromUtf8(NewEndpointName())), site(endpointName),
          user(site, ledger, endpointName) {}

    ~Directory() {
        counts.jobsAcknowledged += ledger.AcknowledgedJobs();
        counts.deletionsAcknowledged += ledger.AcknowledgedDeletions();
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    /// One host from its start to its sudden end.
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

    /// Two hosts more, which look at what the last one left and end as they should: the second finds nothing to do.
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
    /// Some are armed before the start, and may strike while the host mends what the one before left.
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

    /// A host that was asked to end goes on until then; what follows the last scene may also strike.
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

    /// What is sent before the connection is seen to be gone would be lost, not sent to the next host.
    void Bury() {
        site.AwaitHostEnd();
        user.HearLastWords();
        site.Disarm();
    }

    /// Looks at what the last host left, without a host and through a new one; false when that one died meanwhile.
    bool StartAndExamine() {
        std::vector<JobListInfo> list = ReadList(site, counts);
        ledger.Compare(list);
        const bool isReady = site.StartHost();
        ++counts.hostsStarted;
        list.clear();
        if (!isReady || !user.Meet() || !user.Ask(list)) {
            return false;
        }
        ledger.Compare(list);
        ledger.Adopt(list);
        counts.jobsCompared += list.size();
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
    JobLedger ledger{JobLedger::Others::None, [](const std::string& problem) { ADD_FAILURE() << problem; }};
    UserSimulator user;
};

/// The rounds of one data directory, beginning with `first`; the number of the round after them.
std::uint64_t RunDirectory(std::uint64_t seed, std::uint64_t first, std::size_t kills, CrashCounts& counts) {
    Directory directory(seed, counts);
    std::uint64_t round = first;
    try {
        for (; round < first + roundsInADirectory && counts.Kills() < kills && !testing::Test::HasFailure(); ++round) {
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

/// The soak test: a host under load and faults must not use more resources at the end than at the beginning. Short by
/// default; SOAK_MINUTES makes it long, SOAK_SEED selects the random choices.

#include "kit/processes/HostProcessFixture.h"
#include "system/soak/GrowthCheck.h"
#include "system/soak/Leaks.h"
#include "system/soak/SoakDriver.h"

#include "kit/OtherProcesses.h"
#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <chrono>
#include <cstdio>

namespace {

using std::chrono::steady_clock;

/// The length of a run, and the number of jobs in a round; the host is measured at the idle point after each round.
struct RunLength {
    std::chrono::minutes time{0};
    int rounds = 3;
    std::size_t jobsOfARound = 8;
    /// The number of listed jobs at the end of each round.
    std::size_t rows = 6;
};

unsigned NumberFrom(const std::wstring& variable, unsigned otherwise) {
    const std::wstring text = platform::GetEnvironment(variable).value_or(L"");
    return text.empty() ? otherwise : static_cast<unsigned>(std::stoul(text));
}

RunLength LengthFromEnvironment() {
    RunLength length;
    length.time = std::chrono::minutes(NumberFrom(L"SOAK_MINUTES", 0));
    if (length.time.count() > 0) {
        length.jobsOfARound = 250;
        length.rows = 300;
    }
    return length;
}

class SoakTest : public HostProcessFixture {
protected:
    SoakTest() {
        WriteSettings(R"({"version":1,"workDirectory":"work","logFile":"controller.log","jobListFile":"job_list.json",)"
                      R"("scenarioDirectories":[{"path":"scenarios"}],"interpreters":{".rb":["test_scenario"]},)"
                      R"("cancelGraceSeconds":1,"scenarioLogLimitBytes":65536,"transmitterName":")" +
                      text::ToUtf8(endpointName) + "\"}");
        for (const JobKind& kind : JobKinds()) {
            WriteTextFile(directory / (L"scenarios\\" + text::FromUtf8(kind.name) + L".rb"), kind.steps);
        }
        WriteTextFile(directory / L"jobs.json", R"({"EnqueueJobs":[{"scenario":{"id":"success.rb"},"outputDir":"out",)"
                                                R"("inputFileSets":[["inputs.txt"],["inputs.txt"]]}]})");
        EXPECT_TRUE(platform::EnsureDirectory(directory / L"temporary"));
    }

    SoakPlace Place() const {
        const auto frontEnd = [this](const std::vector<std::wstring>& arguments) {
            platform::ProcessStart process = FrontEndProcess(arguments);
            for (const wchar_t* const name : {L"TMPDIR", L"TMP", L"TEMP"}) {
                process.environment.emplace_back(name, platform::ToNativeText(directory / L"temporary"));
            }
            return process;
        };
        return {endpointName, host.Get(), directory / L"inputs.txt", directory / L"out", directory / L"jobs.json",
                frontEnd};
    }

    void RunRounds(SoakDriver& driver) {
        const auto end = steady_clock::now() + length.time;
        for (int round = 0; round < length.rounds || steady_clock::now() < end; ++round) {
            driver.RunRound(length.jobsOfARound);
            driver.ShortenList(length.rows);
            driver.CompareList();
            TakeSample(driver);
        }
    }

    void TakeSample(const SoakDriver& driver) {
        Sample& sample = samples.emplace_back();
        sample.jobs = static_cast<int>(driver.Jobs().Made());
        sample.figures = FiguresOf(host.Get());
        const auto minutes = std::chrono::duration<double, std::ratio<60>>(steady_clock::now() - begin).count();
        std::printf("%6.1f min %7d jobs %9.1f KiB private %9.1f KiB resident %4d handles %3d threads %3d zombies\n",
                    minutes, sample.jobs, static_cast<double>(sample.figures.privateBytes) / 1024,
                    static_cast<double>(sample.figures.residentBytes) / 1024, sample.figures.handles,
                    sample.figures.threads, sample.figures.zombies);
        std::fflush(stdout);
        EXPECT_EQ(test_support::CountProcessesIn(directory.Path()), 0) << "processes of jobs that have ended";
    }

    /// The heap grows to the size of the largest concurrent responses, which occur in the first third of the run.
    std::vector<Sample> SamplesAfterWarmUp() const {
        return {samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 3), samples.end()};
    }

    void Report(const SoakDriver& driver) const {
        for (const auto& [end, count] : driver.Jobs().Ends()) {
            std::printf("%7d jobs ended as %s\n", count, end.c_str());
        }
        for (const auto& [what, count] : driver.Done()) {
            std::printf("%7d %s\n", count, what.c_str());
        }
        std::printf("%7d front ends started\n%7d front ends killed\n", driver.FrontEnds().Started(),
                    driver.FrontEnds().Killed());
        const std::vector<Sample> measured = SamplesAfterWarmUp();
        std::printf(
            "Memory grows by %.1f bytes a job from job %d to job %d; allowed are %.1f, of which %.0f are meant\n",
            BytesPerJob(measured), measured.front().jobs, measured.back().jobs, AllowedBytesPerJob(measured, Limits()),
            Limits().specifiedBytesPerJob);
    }

    /// A killed front end cannot clean up; the next one does.
    void ExpectTheNextFrontEndToClearUp() const {
        EXPECT_EQ(test_support::RunToEnd(Place().frontEnd({L"controller_cli", L"-f", L"-s", L"1"})).exitCode, 0);
        std::vector<platform::DirectoryEntry> left;
        EXPECT_TRUE(platform::ListDirectory(directory / L"temporary", left));
        EXPECT_TRUE(left.empty()) << left.size() << " folders";
    }

    void ExpectNo(const std::vector<std::string>& problems) const {
        for (const std::string& problem : problems) {
            ADD_FAILURE() << problem;
        }
    }

    /// The engine remembers each id for its lifetime: a set element and its text. In runs too short for the heap to
    /// reach its size for large responses, memory is judged roughly.
    GrowthLimits Limits() const {
        constexpr int jobsOfALongRun = 5000;
        constexpr double roughly = 8;
        const double share = samples.back().jobs < jobsOfALongRun ? roughly : 1;
        return {.specifiedBytesPerJob = 128, .noiseBytesPerJob = 24, .noiseBytes = share * SOAK_MEMORY_NOISE_BYTES};
    }

    const RunLength length = LengthFromEnvironment();
    const steady_clock::time_point begin = steady_clock::now();
    std::vector<Sample> samples;
};

TEST_F(SoakTest, ABusyHostStaysAsItIsAndLeavesNothingBehind) {
    const unsigned seed = NumberFrom(L"SOAK_SEED", 1);
    std::printf("Seed %u\n", seed);
    StartHost();
    SoakDriver driver(Place(), seed);
    RunRounds(driver);
    const std::vector<JobListInfo> listed = driver.CompareList();
    ExpectTheNextFrontEndToClearUp();
    driver.EndHost();
    EXPECT_EQ(AwaitHostEnd(), 0);
    Report(driver);
    ExpectNo(driver.Problems());
    ExpectNo(ReasonsNotFlat(SamplesAfterWarmUp(), Limits()));
    ExpectNo(FindLeaks(directory.Path(), listed));
    EXPECT_EQ(test_support::CountProcessesIn(directory.Path()), 0);
}

} // namespace

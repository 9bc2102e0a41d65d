#include "system/soak/GrowthCheck.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int64_t someMemory = 5'000'000;
constexpr GrowthLimits limits{.specifiedBytesPerJob = 100, .noiseBytesPerJob = 20, .noiseBytes = 100'000};

/// Ten samples, 1000 jobs apart, of a process that grows by this many bytes per job.
std::vector<Sample> Growing(std::int64_t bytesPerJob) {
    std::vector<Sample> samples;
    for (int jobs = 1000; jobs <= 10'000; jobs += 1000) {
        Sample& sample = samples.emplace_back();
        sample.jobs = jobs;
        sample.figures.privateBytes = someMemory + jobs * bytesPerJob;
        sample.figures.handles = 12;
        sample.figures.threads = 3;
    }
    return samples;
}

TEST(GrowthCheckTest, TheSlopeIsThatOfTheLine) {
    EXPECT_NEAR(BytesPerJob(Growing(130)), 130, 0.001);
    EXPECT_NEAR(BytesPerJob(Growing(0)), 0, 0.001);
    EXPECT_EQ(BytesPerJob({Sample{}}), 0);
    EXPECT_EQ(BytesPerJob({}), 0);
}

TEST(GrowthCheckTest, OverMoreJobsLessNoiseIsAllowedForEach) {
    EXPECT_NEAR(AllowedBytesPerJob(Growing(0), limits), 100 + 20 + 100'000 / 9000.0, 0.001);
}

TEST(GrowthCheckTest, GrowthThatIsMeantAndNoiseAreFlat) {
    EXPECT_THAT(ReasonsNotFlat(Growing(0), limits), IsEmpty());
    EXPECT_THAT(ReasonsNotFlat(Growing(100), limits), IsEmpty());
    std::vector<Sample> samples = Growing(100);
    samples[4].figures.privateBytes += 60'000;
    samples[5].figures.privateBytes -= 60'000;
    EXPECT_THAT(ReasonsNotFlat(samples, limits), IsEmpty());
}

TEST(GrowthCheckTest, AnObjectOfTheSmallestSizeThatEachJobLosesIsALeak) {
    EXPECT_THAT(ReasonsNotFlat(Growing(132), limits), ElementsAre(HasSubstr("memory grows by 132")));
}

TEST(GrowthCheckTest, OneHandleMoreIsALeakAndShownByItsKind) {
    std::vector<Sample> samples = Growing(0);
    samples.front().figures.handleKinds = {{"socket", 12}};
    samples.back().figures.handles = 13;
    samples.back().figures.handleKinds = {{"pipe", 1}, {"socket", 12}};
    EXPECT_THAT(ReasonsNotFlat(samples, limits),
                ElementsAre("13 handles after 10000 jobs (1 pipe, 12 socket), 12 after 1000 jobs (12 socket)"));
}

TEST(GrowthCheckTest, AThreadOrAZombieMoreIsNotFlat) {
    std::vector<Sample> samples = Growing(0);
    samples[3].figures.threads = 4;
    samples[6].figures.zombies = 1;
    EXPECT_THAT(ReasonsNotFlat(samples, limits),
                ElementsAre("4 threads after 4000 jobs, 3 after 1000 jobs", "1 zombies after 7000 jobs"));
}

TEST(GrowthCheckTest, OneSampleProvesNothing) {
    EXPECT_THAT(ReasonsNotFlat({Sample{}}, limits), ElementsAre(HasSubstr("fewer than two")));
}

} // namespace

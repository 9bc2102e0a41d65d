#include "slurm/Heartbeat.h"

#include <gtest/gtest.h>

namespace {

using slurm::Heartbeat;
using slurm::Time;
using std::chrono::seconds;

constexpr Time start{};

} // namespace

TEST(HeartbeatTest, NothingIsLostBeforeTheFirstBeat) {
    Heartbeat beat(seconds(60));
    beat.OnSeen("", start);
    EXPECT_FALSE(beat.HasBegun());
    EXPECT_FALSE(beat.IsLost(start + seconds(1000)));
}

TEST(HeartbeatTest, TheSameContentIsNoBeat) {
    Heartbeat beat(seconds(60));
    beat.OnSeen("1", start);
    beat.OnSeen("1", start + seconds(50));
    EXPECT_FALSE(beat.IsLost(start + seconds(60)));
    EXPECT_TRUE(beat.IsLost(start + seconds(61)));
}

TEST(HeartbeatTest, ChangedContentIsABeatAndMissingContentIsNone) {
    Heartbeat beat(seconds(60));
    beat.OnSeen("1", start);
    beat.OnSeen("2", start + seconds(50));
    beat.OnSeen("", start + seconds(100));
    EXPECT_FALSE(beat.IsLost(start + seconds(110)));
    EXPECT_TRUE(beat.IsLost(start + seconds(111)));
}

TEST(HeartbeatTest, SeveralBeatsFitIntoTheLongestSilence) {
    EXPECT_EQ(Heartbeat(seconds(60)).Interval(), seconds(10));
}

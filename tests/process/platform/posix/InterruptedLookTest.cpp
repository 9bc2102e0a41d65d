#include <csignal>

#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include "platform/processes/Process.h"
#include "platform/system/OwnedHandle.h"

namespace {

void Nothing(int) {}

/// A steady stream of signals.
class ManySignals {
public:
    ManySignals() {
        previous = std::signal(SIGALRM, Nothing);
        const timeval interval = {0, 20};
        const itimerval timer = {interval, interval};
        setitimer(ITIMER_REAL, &timer, nullptr);
    }
    ~ManySignals() {
        const itimerval none = {};
        setitimer(ITIMER_REAL, &none, nullptr);
        std::signal(SIGALRM, previous);
    }
    ManySignals(const ManySignals&) = delete;
    ManySignals& operator=(const ManySignals&) = delete;

private:
    void (*previous)(int) = nullptr;
};

TEST(InterruptedLookTest, ASignalIsNotTakenForTheEndOfAProcess) {
    const platform::OwnedHandle self = platform::OpenSelf();
    const ManySignals signals;
    int ended = 0;
    for (int look = 0; look < 10'000; ++look) {
        ended += platform::IsProcessRunning(self.Get()) ? 0 : 1;
    }
    EXPECT_EQ(ended, 0);
}

} // namespace

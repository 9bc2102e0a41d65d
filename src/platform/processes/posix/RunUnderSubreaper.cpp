#include "platform/processes/RunUnderSubreaper.h"

#include <csignal>
#include <cstdlib>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/Process.h"
#include "platform/processes/posix/Descendants.h"
#include "platform/processes/posix/ExitStatus.h"

namespace platform {
namespace {

/// Blocks the signals that the supervisor handles, so that `Next` can wait for them.
class BlockedSignals {
public:
    BlockedSignals() {
        sigemptyset(&blocked);
        for (const int number : {SIGCHLD, SIGTERM, SIGINT, SIGHUP}) {
            sigaddset(&blocked, number);
        }
        pthread_sigmask(SIG_BLOCK, &blocked, &before);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

    int Next() const { return sigwaitinfo(&blocked, nullptr); }

private:
    sigset_t blocked{};
    sigset_t before{};
};

/// True if the worker has ended; `ended` says how. Resumes a stopped worker.
bool HasEnded(pid_t worker, siginfo_t& ended) {
    for (;;) {
        ended = {};
        if (waitid(P_PID, static_cast<id_t>(worker), &ended, WEXITED | WSTOPPED | WNOHANG) != 0 || ended.si_pid == 0) {
            return false;
        }
        if (ended.si_code != CLD_STOPPED) {
            return true;
        }
        kill(worker, SIGCONT);
    }
}

WorkerExit Watch(pid_t worker, const BlockedSignals& signals) {
    siginfo_t ended{};
    while (!HasEnded(worker, ended)) {
        if (const int signal = signals.Next(); signal > 0 && signal != SIGCHLD) {
            kill(worker, SIGTERM);
        }
    }
    KillDescendants([](const siginfo_t&) {});
    return {ExitStatusOf(ended), ended.si_code != CLD_EXITED};
}

} // namespace

WorkerExit RunUnderSubreaper(const std::function<std::int32_t(void* subreaper)>& work) {
    const OwnedHandle subreaper = OpenSelf();
    pid_t worker = -1;
    {
        const BlockedSignals signals;
        // A plain fork: this process is small and has a single thread. The child executes no other program.
        worker = subreaper ? fork() : -1;
        if (worker > 0) {
            prctl(PR_SET_CHILD_SUBREAPER, 1UL, 0UL, 0UL, 0UL);
            return Watch(worker, signals);
        }
    }
    if (worker < 0) {
        return {work(nullptr), false};
    }
    std::exit(work(subreaper.Get()));
}

} // namespace platform

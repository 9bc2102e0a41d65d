#include "platform/processes/GuardedRun.h"

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

/// While it lives, the signals that a guard looks at wait for it.
class HeldSignals {
public:
    HeldSignals() {
        sigemptyset(&held);
        for (const int number : {SIGCHLD, SIGTERM, SIGINT, SIGHUP}) {
            sigaddset(&held, number);
        }
        pthread_sigmask(SIG_BLOCK, &held, &before);
    }
    ~HeldSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    int Next() const { return sigwaitinfo(&held, nullptr); }

private:
    sigset_t held{};
    sigset_t before{};
};

/// True when the worker has ended, with how; one that somebody stopped goes on.
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

GuardedEnd Watch(pid_t worker, const HeldSignals& signals) {
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

GuardedEnd RunGuarded(const std::function<std::int32_t(void* guard)>& work) {
    const OwnedHandle guard = OpenSelf();
    pid_t worker = -1;
    {
        const HeldSignals signals;
        // A plain copy of this process, which is small and has one thread; it runs no other program.
        worker = guard ? fork() : -1;
        if (worker > 0) {
            prctl(PR_SET_CHILD_SUBREAPER, 1UL, 0UL, 0UL, 0UL);
            return Watch(worker, signals);
        }
    }
    if (worker < 0) {
        return {work(nullptr), false};
    }
    std::exit(work(guard.Get()));
}

} // namespace platform

#include "platform/processes/Orphans.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <vector>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/files/FileSystem.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/processes/posix/Descendants.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

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

using std::chrono::steady_clock;

/// Entries of an environment, "NAME=value".
using Marks = std::set<std::string, std::less<>>;

Marks MarksOf(const std::wstring& variable, const std::set<std::wstring>& values) {
    Marks marks;
    for (const std::wstring& value : values) {
        marks.insert(text::ToUtf8(variable) + '=' + text::ToUtf8(value));
    }
    return marks;
}

/// An unreadable process (exited, or another user's) counts as unmarked.
bool IsMarked(pid_t process, const Marks& marks) {
    constexpr std::size_t mostBytes = std::size_t{16} << 20;
    std::string environment;
    if (ReadFile(L"/proc/" + std::to_wstring(process) + L"/environ", mostBytes, environment)) {
        return false;
    }
    for (std::string_view rest = environment; !rest.empty();) {
        const std::string_view entry = rest.substr(0, rest.find('\0'));
        if (marks.contains(entry)) {
            return true;
        }
        rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
    }
    return false;
}

/// Returns null if the process is not marked or cannot be killed. The second check ensures that the process id was not
/// reused in between.
OwnedHandle EndIfMarked(pid_t process, const Marks& marks) {
    if (process == getpid() || !IsMarked(process, marks)) {
        return OwnedHandle();
    }
    const int descriptor = OpenProcessDescriptor(process);
    OwnedHandle handle(HandleOf(descriptor));
    const bool isEnded = handle && IsMarked(process, marks) && pidfd_send_signal(descriptor, SIGKILL, nullptr, 0) == 0;
    return isEnded ? std::move(handle) : OwnedHandle();
}

std::vector<OwnedHandle> EndSome(const Marks& marks) {
    constexpr std::size_t mostHandles = 100;
    std::vector<OwnedHandle> ended;
    for (const pid_t process : ListProcesses()) {
        if (OwnedHandle handle = EndIfMarked(process, marks)) {
            ended.push_back(std::move(handle));
        }
        if (ended.size() == mostHandles) {
            break;
        }
    }
    return ended;
}

/// Returns the number of killed processes. The next pass retries those that are still there at the deadline.
std::size_t EndSomeAndWait(const Marks& marks, steady_clock::time_point deadline) {
    const std::vector<OwnedHandle> ended = EndSome(marks);
    for (const OwnedHandle& process : ended) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - steady_clock::now());
        WaitForAny({process.Get()}, std::max(left, std::chrono::milliseconds(0)));
    }
    return ended.size();
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

std::size_t KillProcessesByEnvironment(const std::wstring& variable, const std::set<std::wstring>& values) {
    if (values.empty()) {
        return 0;
    }
    constexpr std::chrono::seconds patience{10};
    const auto deadline = steady_clock::now() + patience;
    const Marks marks = MarksOf(variable, values);
    std::size_t count = 0;
    // A process has no readable environment for a moment during exec. After a pass that killed processes, another pass
    // finds what they had just started.
    int looksInVain = 0;
    while (looksInVain < (count == 0 ? 1 : 2) && steady_clock::now() < deadline) {
        const std::size_t ended = EndSomeAndWait(marks, deadline);
        looksInVain = ended == 0 ? looksInVain + 1 : 0;
        count += ended;
    }
    return count;
}

} // namespace platform

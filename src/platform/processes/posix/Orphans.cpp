#include "platform/processes/Orphans.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/processes/posix/Descendants.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/processes/posix/ProcessFiles.h"
#include "platform/system/Sleep.h"
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

/// For a process that seemed to have no environment: true if that was during exec, when the one of the new program did
/// not exist yet. Threads of the system and processes that have ended never get one.
bool WasBetweenPrograms(pid_t process) {
    constexpr std::size_t state = 3;
    constexpr std::size_t flags = 9;
    constexpr std::size_t startOfCode = 26; // known last of all
    constexpr std::size_t begin = 50;
    constexpr std::size_t end = 51;
    constexpr std::uint64_t exitingOrOfTheSystem = 0x00200004; // PF_EXITING, PF_KTHREAD
    const ProcessStat stat(process);
    const std::string_view now = stat.Field(state);
    const bool isAlive = !now.empty() && now != "Z" && now != "X" && (stat.Number(flags) & exitingOrOfTheSystem) == 0;
    return isAlive && (stat.Number(startOfCode) == 0 || stat.Field(begin) != stat.Field(end));
}

std::string EnvironmentOf(pid_t process) {
    // On a busy machine a process may be halted during exec.
    constexpr int mostLooks = 1000;
    for (int look = 0; look < mostLooks; ++look) {
        std::optional<std::string> environment = ReadProcessFile(process, "environ");
        if (!environment) {
            break;
        }
        if (!environment->empty() || !WasBetweenPrograms(process)) {
            return std::move(*environment);
        }
        SleepFor(std::chrono::milliseconds(1));
    }
    return {};
}

bool IsMarked(pid_t process, const Marks& marks) {
    const std::string environment = EnvironmentOf(process);
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
    constexpr std::chrono::seconds timeout{10};
    const auto deadline = steady_clock::now() + timeout;
    const Marks marks = MarksOf(variable, values);
    std::size_t count = 0;
    // After a pass that killed processes, further ones find what they had just started.
    int looksInVain = 0;
    while (looksInVain < (count == 0 ? 1 : 2) && steady_clock::now() < deadline) {
        const std::size_t ended = EndSomeAndWait(marks, deadline);
        looksInVain = ended == 0 ? looksInVain + 1 : 0;
        count += ended;
    }
    return count;
}

} // namespace platform

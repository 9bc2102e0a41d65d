#include "kit/programs/BadBehaviours.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/terminal/Console.h"
#include "text/Text.h"

namespace {

/// An ancestor of this process: 1 is the parent. This process itself if there is none.
pid_t Ancestor(int generations) {
    pid_t process = getpid();
    for (; generations > 0 && process > 1; --generations) {
        std::ifstream file("/proc/" + std::to_string(process) + "/stat");
        std::string text;
        std::getline(file, text, '\0');
        // The parent's number follows the name, which is in parentheses and may contain anything.
        process = static_cast<pid_t>(std::strtol(text.c_str() + text.rfind(')') + 4, nullptr, 10));
    }
    return process > 1 ? process : getpid();
}

/// The highest ancestor first.
void SignalAncestors(int generations, std::initializer_list<int> signals) {
    std::vector<pid_t> ancestors;
    for (int generation = generations; generation > 0; --generation) {
        ancestors.push_back(Ancestor(generation));
    }
    for (const int signal : signals) {
        for (const pid_t ancestor : ancestors) {
            kill(ancestor, signal);
        }
    }
}

/// "1": the parent; "2": also its parent, and so on. All at once, so that none sees the end of another.
void KillAncestors(const std::wstring& generations) {
    SignalAncestors(std::stoi(generations), {SIGSTOP, SIGKILL});
}

void StopAncestors(const std::wstring& generations) {
    SignalAncestors(std::stoi(generations), {SIGSTOP});
}

void AskAncestorsToEnd(const std::wstring& generations) {
    SignalAncestors(std::stoi(generations), {SIGTERM});
}

void Raise(const std::wstring& number) {
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    // A sanitizer would handle the signal in its own way.
    signal(std::stoi(number), SIG_DFL);
    kill(getpid(), std::stoi(number));
}

void BeLowest(const std::wstring&) {
    setpriority(PRIO_PROCESS, 0, 19);
}

void MakeNamedPipe(const std::wstring& name) {
    mkfifo(text::ToUtf8(name).c_str(), 0600);
}

/// "NAME TARGET": replaces an existing entry.
void MakeLink(const std::wstring& text, int (*make)(const char*, const char*)) {
    const std::string words = text::ToUtf8(text);
    const std::string name = words.substr(0, words.find(' '));
    unlink(name.c_str());
    make(words.substr(name.size() + 1).c_str(), name.c_str());
}

void MakeSymbolicLink(const std::wstring& text) {
    MakeLink(text, symlink);
}

void MakeHardLink(const std::wstring& text) {
    MakeLink(text, link);
}

void MakeSparseFile(const std::wstring& name) {
    constexpr off_t size = off_t{1} << 30;
    const int file = open(text::ToUtf8(name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    [[maybe_unused]] const int result = ftruncate(file, size);
    close(file);
}

std::string WorkDirectory() {
    const char* const runInfo = std::getenv("CONTROLLER_RUN_INFO");
    const std::string path = runInfo == nullptr ? "" : runInfo;
    return path.substr(0, path.rfind('/'));
}

/// With an external program that removes unconditionally.
void RemoveAll(const std::string& path) {
    [[maybe_unused]] const int result = std::system(("rm -rf '" + path + "'").c_str());
}

void DeleteWorkDirectory(const std::wstring&) {
    RemoveAll(WorkDirectory());
}

void ReplaceWorkDirectory(const std::wstring& target) {
    RemoveAll(WorkDirectory());
    symlink(text::ToUtf8(target).c_str(), WorkDirectory().c_str());
}

void ReplaceParentDirectory(const std::wstring& target) {
    const std::string parent = WorkDirectory().substr(0, WorkDirectory().rfind('/'));
    rename(parent.c_str(), (parent + ".moved").c_str());
    symlink(text::ToUtf8(target).c_str(), parent.c_str());
}

/// Nested directories deeper than any path limit, with names that are not text and finally without permissions.
void Dig(const std::wstring& depth) {
    const int start = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = std::stoi(depth); level > 0; --level) {
        mkdir("a folder of twenty-six bytes", 0700);
        [[maybe_unused]] const int result = chdir("a folder of twenty-six bytes");
        close(open("\xff\xfe no text", O_WRONLY | O_CREAT | O_CLOEXEC, 0400));
    }
    chmod(".", 0);
    [[maybe_unused]] const int result = fchdir(start);
    chmod("a folder of twenty-six bytes", 0);
}

void CloseOutput(const std::wstring&) {
    close(STDOUT_FILENO);
    close(STDERR_FILENO);
}

[[noreturn]] void BeDaemon() {
    clearenv();
    char program[] = "/bin/sleep";
    char longTime[] = "1000";
    char* arguments[] = {program, longTime, nullptr};
    close(open(("process-" + std::to_string(getpid())).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    [[maybe_unused]] const int result = chdir("/");
    signal(SIGTERM, SIG_IGN);
    execv(program, arguments);
    _exit(1);
}

/// A traditional daemon: two forks, its own session, an empty environment.
void LeaveDaemon(const std::wstring&) {
    int ends[2] = {-1, -1};
    [[maybe_unused]] const int made = pipe2(ends, O_CLOEXEC);
    if (const pid_t child = fork(); child != 0) {
        close(ends[1]);
        waitpid(child, nullptr, 0);
        // End of file when the daemon's program runs.
        char byte = 0;
        [[maybe_unused]] const ssize_t count = read(ends[0], &byte, 1);
        close(ends[0]);
        return;
    }
    setsid();
    if (fork() != 0) {
        _exit(0);
    }
    BeDaemon();
}

/// Each process starts others, in their own sessions, until the total is reached; none ends.
void ForkUpTo(const std::wstring& most) {
    auto* const count =
        static_cast<int*>(mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    while (__atomic_add_fetch(count, 1, __ATOMIC_SEQ_CST) < std::stoi(most)) {
        if (fork() == 0) {
            setsid();
        }
    }
    for (;;) {
        pause();
    }
}

/// Chains of processes: each starts the next and ends, for ever. Many at once.
void Hop(const std::wstring& count) {
    for (int hopper = 0; hopper < std::stoi(count); ++hopper) {
        if (fork() == 0) {
            for (;;) {
                setsid();
                if (fork() != 0) {
                    _exit(0);
                }
            }
        }
    }
}

/// Processes that lose their parent and end at once.
void LeaveOrphans(const std::wstring& count) {
    for (int orphan = 0; orphan < std::stoi(count); ++orphan) {
        if (const pid_t child = fork(); child != 0) {
            waitpid(child, nullptr, 0);
        } else {
            _exit(fork() == 0 ? 0 : 1);
        }
    }
}

/// A value of the process status; "VmHWM:" is its peak memory.
std::string StatusValue(pid_t process, const std::string& name) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) {
            return line.substr(name.size());
        }
    }
    return "";
}

void PrintMemoryOfRunner(const std::wstring&) {
    const std::string peak = std::to_string(std::stol(StatusValue(Ancestor(1), "VmHWM:")));
    (void)platform::WriteOutput("runner: " + peak + " KiB\n");
}

/// Waits until the parent has reaped all ended descendants.
void WaitForNoZombies(const std::wstring&) {
    const std::string parent = std::to_string(Ancestor(1));
    const std::string list = "/proc/" + parent + "/task/" + parent + "/children";
    for (bool found = true; found;) {
        found = false;
        std::ifstream children(list);
        for (pid_t child = 0; children >> child;) {
            found = found || StatusValue(child, "State:").find('Z') != std::string::npos;
        }
        usleep(1000);
    }
}

} // namespace

Steps SystemBadBehaviours() {
    return {
        {L"kill ancestors ", KillAncestors},
        {L"stop ancestors ", StopAncestors},
        {L"ask ancestors to end ", AskAncestorsToEnd},
        {L"raise ", Raise},
        {L"be lowest", BeLowest},
        {L"make named pipe ", MakeNamedPipe},
        {L"make link ", MakeSymbolicLink},
        {L"make hard link ", MakeHardLink},
        {L"make sparse file ", MakeSparseFile},
        {L"delete work folder", DeleteWorkDirectory},
        {L"replace work folder ", ReplaceWorkDirectory},
        {L"replace parent folder ", ReplaceParentDirectory},
        {L"dig ", Dig},
        {L"close output", CloseOutput},
        {L"leave daemon", LeaveDaemon},
        {L"fork up to ", ForkUpTo},
        {L"hop ", Hop},
        {L"leave orphans ", LeaveOrphans},
        {L"print memory of runner", PrintMemoryOfRunner},
        {L"wait for no zombies", WaitForNoZombies},
    };
}

#include "programs/Misdeeds.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <vector>

#include <sys/types.h>
#include <unistd.h>

namespace {

/// The parent of this process, or its parent's, and so on; 0 when there is none.
pid_t Ancestor(int generations) {
    pid_t process = getpid();
    for (; generations > 0 && process > 1; --generations) {
        std::ifstream file("/proc/" + std::to_string(process) + "/stat");
        std::string text;
        std::getline(file, text, '\0');
        // The parent's number stands behind the name, which is in parentheses and may hold anything.
        process = static_cast<pid_t>(std::strtol(text.c_str() + text.rfind(')') + 4, nullptr, 10));
    }
    return process > 1 ? process : 0;
}

/// "1": its parent alone; "2": the parent of that too, and so on. All at once: none gets to see another's end.
void KillAncestors(const std::wstring& generations) {
    std::vector<pid_t> ancestors;
    for (int generation = std::stoi(generations); generation > 0; --generation) {
        ancestors.push_back(Ancestor(generation));
    }
    for (const int signal : {SIGSTOP, SIGKILL}) {
        for (const pid_t ancestor : ancestors) {
            kill(ancestor > 0 ? ancestor : getpid(), signal);
        }
    }
}

} // namespace

Steps SystemMisdeeds() {
    return {
        {L"kill ancestors ", KillAncestors},
    };
}

#include "controller_host/HostOptions.h"

#include "controller_host/hooks/HookSupervisor.h"

#include <cstddef>

const char hostUsage[] =
    "Usage: controller_host [--background | --status]\n"
    "\n"
    "Keeps the queue of jobs, runs them, and answers front ends such as cadjobs.\n"
    "\n"
    "  --background  detach from the terminal; returns once front ends can reach the host\n"
    "  --status      says whether a host runs and for what jobs would fail; exit code 0 when one runs and all is "
    "well,\n"
    "                otherwise 1\n"
    "  --help        this text\n"
    "  --version     the version\n"
    "\n"
    "Settings: the file named by CONTROLLER_SETTINGS_FILE, or the user's own.\n"
    "Ends on Ctrl-C, SIGTERM and at the end of the session: running scenarios are asked to stop.\n"
    "Exit code: 0 ended or now running, 1 could not run, 2 wrong use, 4 another host is running.\n";

HostOptions ParseHostOptions(const std::vector<std::wstring>& arguments) {
    using Mode = HostOptions::Mode;
    if (!arguments.empty() && arguments.front() == superviseHookOption) {
        return {.mode = Mode::SuperviseHook, .supervisedHook = {arguments.begin() + 1, arguments.end()}};
    }
    HostOptions options;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::wstring& argument = arguments[index];
        if (argument == L"--background") {
            options.mode = Mode::Background;
        } else if (argument == L"--ready-event" && index + 1 < arguments.size()) {
            options.readyEvent = arguments[++index];
        } else if (argument == L"--status") {
            options.mode = Mode::Status;
        } else if (argument == L"--help") {
            return {.mode = Mode::Help};
        } else if (argument == L"--version") {
            return {.mode = Mode::Version};
        } else {
            return {.mode = Mode::Wrong, .problem = argument};
        }
    }
    return options;
}

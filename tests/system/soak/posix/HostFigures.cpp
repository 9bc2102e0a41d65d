#include "system/soak/HostFigures.h"

#include <array>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include "kit/OtherProcesses.h"
#include "platform/processes/Process.h"

namespace {

/// A line of the process status: "VmRSS:     5120 kB".
std::int64_t ReadStatus(const std::string& processDirectory, const std::string& wanted) {
    std::ifstream file(processDirectory + "/status");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(wanted + ":")) {
            return std::stoll(line.substr(wanted.size() + 1));
        }
    }
    return 0;
}

/// "socket:[4711]" is a "socket".
std::string KindOf(const std::string& descriptorLink) {
    std::array<char, 4096> target{};
    const ssize_t length = readlink(descriptorLink.c_str(), target.data(), target.size());
    const std::string text(target.data(), length < 0 ? 0 : static_cast<std::size_t>(length));
    return text.starts_with("socket:") || text.starts_with("pipe:") ? text.substr(0, text.find(':')) : text;
}

std::map<std::string, int> DescriptorsOf(const std::string& processDirectory) {
    std::map<std::string, int> kinds;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(processDirectory + "/fd", ignored)) {
        ++kinds[KindOf(entry.path())];
    }
    return kinds;
}

bool IsZombie(std::uint32_t number) {
    std::ifstream file("/proc/" + std::to_string(number) + "/status");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("State:")) {
            return line.find('Z') != std::string::npos;
        }
    }
    return false;
}

} // namespace

HostFigures FiguresOf(void* process) {
    const std::uint32_t number = platform::ProcessNumber(process);
    const std::string directory = "/proc/" + std::to_string(number);
    HostFigures figures;
    figures.residentBytes = ReadStatus(directory, "VmRSS") * 1024;
    figures.privateBytes = ReadStatus(directory, "RssAnon") * 1024;
    figures.threads = static_cast<int>(ReadStatus(directory, "Threads"));
    figures.handleKinds = DescriptorsOf(directory);
    for (const auto& [kind, count] : figures.handleKinds) {
        figures.handles += count;
    }
    for (const std::uint32_t child : test_support::ChildrenOf(number)) {
        figures.zombies += IsZombie(child) ? 1 : 0;
    }
    return figures;
}

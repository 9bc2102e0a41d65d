#include "platform/processes/posix/ProcessFiles.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include <unistd.h>

#include "platform/system/posix/Descriptor.h"

namespace platform {

std::vector<pid_t> ListProcesses() {
    std::vector<pid_t> processes;
    const DirectoryListing directory(opendir("/proc"));
    while (const dirent* const entry = directory ? readdir(directory.get()) : nullptr) {
        if (std::string_view(entry->d_name).find_first_not_of("0123456789") == std::string_view::npos) {
            processes.push_back(static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10)));
        }
    }
    return processes;
}

std::string ProcessDirectory(pid_t process) {
    return "/proc/" + std::to_string(process);
}

std::optional<std::string> ReadProcessFile(pid_t process, const char* name) {
    constexpr std::size_t bytesOfCall = std::size_t{128} << 10;
    constexpr std::size_t mostBytes = std::size_t{16} << 20;
    const OwnedFileHandle file = OpenDescriptor((ProcessDirectory(process) + '/' + name).c_str(), O_RDONLY);
    if (!file) {
        return std::nullopt;
    }
    std::string content;
    for (ssize_t count = 1; count > 0 && content.size() < mostBytes;) {
        const std::size_t begin = content.size();
        content.resize(begin + bytesOfCall);
        count = read(DescriptorOf(file), content.data() + begin, bytesOfCall);
        content.resize(begin + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return content;
}

ProcessStat::ProcessStat(pid_t process) : text(ReadProcessFile(process, "stat").value_or("")) {
    // Field 2 is a name in parentheses that may contain any characters.
    text.erase(0, std::min(text.rfind(')') + 1, text.size()));
}

std::string_view ProcessStat::Field(std::size_t number) const {
    constexpr std::size_t first = 3;
    constexpr std::string_view blanks = " \n";
    std::string_view rest = text;
    const auto skipTo = [&](std::size_t position) { rest.remove_prefix(std::min(position, rest.size())); };
    skipTo(rest.find_first_not_of(blanks));
    for (std::size_t field = first; field < number; ++field) {
        skipTo(rest.find_first_of(blanks));
        skipTo(rest.find_first_not_of(blanks));
    }
    return rest.substr(0, rest.find_first_of(blanks));
}

std::uint64_t ProcessStat::Number(std::size_t number) const {
    const std::string_view field = Field(number);
    std::uint64_t value = 0;
    std::from_chars(field.data(), field.data() + field.size(), value);
    return value;
}

} // namespace platform

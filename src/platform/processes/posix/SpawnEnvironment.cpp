#include "platform/processes/posix/SpawnEnvironment.h"

#include <map>
#include <string_view>

#include <unistd.h>

#include "text/Text.h"

namespace platform {

std::vector<std::string> SpawnEnvironment(const ProcessStart& start) {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        variables.emplace(text.substr(0, text.find('=')), text);
    }
    for (const auto& [name, value] : start.environment) {
        const std::string key = text::ToUtf8(name);
        variables.erase(key);
        if (value) {
            variables.emplace(key, key + '=' + text::ToUtf8(*value));
        }
    }
    std::vector<std::string> entries;
    entries.reserve(variables.size());
    for (const auto& [name, entry] : variables) {
        entries.push_back(entry);
    }
    return entries;
}

} // namespace platform

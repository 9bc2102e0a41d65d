#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "fuzz/RegressionTargets.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

constexpr std::size_t largestInput = std::size_t{1} << 20;

int Fail(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    return 1;
}

bool Feed(FuzzTarget target, const std::wstring& path) {
    std::string bytes;
    if (const platform::Error result = platform::ReadFile(path, largestInput, bytes); !result) {
        Fail(text::ToUtf8(path + L": " + result.Text()));
        return false;
    }
    // Printed first, because a failing input ends the process.
    std::printf("%s\n", text::ToUtf8(path).c_str());
    std::fflush(stdout);
    // A copy of the exact size, so that a sanitizer detects reads beyond its end.
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    target(input.data(), input.size());
    return true;
}

} // namespace

/// Feeds each file of a directory to a fuzz target: `fuzz_regressions TARGET FOLDER`. Fails if the directory is empty.
int main(int count, char** values) {
    const std::vector<std::wstring> arguments = platform::ProgramArguments(count, values);
    if (arguments.size() != 2) {
        return Fail("Usage: fuzz_regressions TARGET FOLDER");
    }
    const FuzzTarget target = FindFuzzTarget(text::ToUtf8(arguments[0]));
    if (target == nullptr) {
        return Fail("There is no such target.");
    }
    std::vector<platform::DirectoryEntry> entries;
    if (const platform::Error result = platform::ListDirectory(arguments[1], entries); !result) {
        return Fail(text::ToUtf8(arguments[1] + L": " + result.Text()));
    }
    if (entries.empty()) {
        return Fail("There is nothing to feed: an empty folder tests nothing.");
    }
    return std::all_of(
               entries.begin(), entries.end(),
               [&](const platform::DirectoryEntry& entry) { return Feed(target, arguments[1] + L"\\" + entry.name); })
               ? 0
               : 1;
}

#include "scenario_runner/ScenarioLog.h"

#include <algorithm>
#include <utility>

#include "platform/files/FileSystem.h"
#include "text/Utf8.h"

namespace scenario_runner {
namespace {

constexpr std::string_view cutNotice = "[Earlier output was cut; only the end is kept.]\n";
/// A smaller log would be useless.
constexpr std::size_t smallestLimit = 1024;
constexpr std::size_t largestLimit = std::size_t{1} << 30;

platform::Error OpenAnew(platform::File& file, const std::wstring& path) {
    const platform::Error result = file.OpenForAppending(path, true, platform::AppendTo::RegularFile);
    if (result.kind != platform::ErrorKind::NotSupported) {
        return result;
    }
    // A link or the like is removed itself. If that fails, the second attempt returns the error.
    (void)platform::RemoveFile(path);
    return file.OpenForAppending(path, true, platform::AppendTo::RegularFile);
}

/// The last `length` bytes, starting at a line or at least at a character.
std::string_view LastBytes(std::string_view bytes, std::size_t length) {
    if (bytes.size() <= length) {
        return bytes;
    }
    bytes.remove_prefix(bytes.size() - length);
    const std::size_t lineEnd = bytes.find('\n');
    if (lineEnd < bytes.size() / 2) {
        return bytes.substr(lineEnd + 1);
    }
    const auto* const character = std::find_if_not(bytes.begin(), bytes.end(), text::IsUtf8Continuation);
    bytes.remove_prefix(static_cast<std::size_t>(character - bytes.begin()));
    return bytes;
}

} // namespace

ScenarioLog::ScenarioLog(std::wstring logPath, std::size_t logLimit)
    : path(std::move(logPath)), limit(std::clamp(logLimit, smallestLimit, largestLimit)) {}

platform::Error ScenarioLog::Open() {
    return OpenAnew(file, path);
}

void ScenarioLog::Append(std::string_view bytes) {
    if (bytes.size() >= limit && StartAgainWith(bytes)) {
        return;
    }
    const std::uint64_t size = file.Size() + bytes.size();
    if (size > 2 * limit) {
        CutToLimit(size > MostUncut());
    }
    if (file.Size() + bytes.size() <= MostUncut()) {
        // A full disk must not stop the scenario.
        (void)file.Write(bytes);
    }
}

void ScenarioLog::Close() {
    if (file.Size() > limit + cutNotice.size()) {
        CutToLimit(false);
    }
    file.Close();
}

// A file that cannot be read now (sharing violation, too many open files) is cut later, without loss.
void ScenarioLog::CutToLimit(bool atAnyCost) {
    std::string content;
    const platform::Error result = platform::ReadFileEnd(path, 2 * limit, content);
    if (result || result.kind == platform::ErrorKind::NotFound || atAnyCost) {
        // On failure, the next output tries again.
        (void)StartAgainWith(content);
    }
}

// Truncates in place: a reader that follows the file keeps it, and no second copy takes disk space. Closes the old file
// only after opening the new one, so that a failure leaves a file to write to.
bool ScenarioLog::StartAgainWith(std::string_view end) {
    platform::File fresh;
    if (!OpenAnew(fresh, path)) {
        return false;
    }
    file = std::move(fresh);
    (void)file.Write(cutNotice);
    (void)file.Write(LastBytes(end, limit));
    return true;
}

} // namespace scenario_runner

#include "scenario_runner/ScenarioLog.h"

#include <algorithm>
#include <utility>

#include "platform/FileSystem.h"

namespace scenario_runner {
namespace {

constexpr std::string_view cutNotice = "[Earlier output was cut; only the end is kept.]\n";
/// Below this a log would be of no use.
constexpr std::size_t smallestLimit = 1024;
constexpr std::size_t largestLimit = std::size_t{1} << 30;

/// The last `length` bytes, from the beginning of a line on, or at least of a character.
std::string_view LastBytes(std::string_view bytes, std::size_t length) {
    if (bytes.size() <= length) {
        return bytes;
    }
    bytes.remove_prefix(bytes.size() - length);
    const std::size_t lineEnd = bytes.find('\n');
    if (lineEnd < bytes.size() / 2) {
        return bytes.substr(lineEnd + 1);
    }
    const auto isInCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    bytes.remove_prefix(
        static_cast<std::size_t>(std::find_if_not(bytes.begin(), bytes.end(), isInCharacter) - bytes.begin()));
    return bytes;
}

} // namespace

ScenarioLog::ScenarioLog(std::wstring logPath, std::size_t logLimit)
    : path(std::move(logPath)), limit(std::clamp(logLimit, smallestLimit, largestLimit)) {}

platform::Error ScenarioLog::Open() {
    const platform::Error error = file.Open(path, true, platform::AppendTo::RegularFile);
    if (error.kind != platform::ErrorKind::NotSupported) {
        return error;
    }
    // A link or the like, which gives way itself.
    platform::RemoveFile(path);
    return file.Open(path, true, platform::AppendTo::RegularFile);
}

void ScenarioLog::Append(std::string_view bytes) {
    if (bytes.size() >= limit) {
        StartAgainWith(bytes);
        return;
    }
    if (file.Size() + bytes.size() > 2 * limit) {
        CutToLimit();
    }
    file.Write(bytes);
}

void ScenarioLog::Close() {
    if (file.Size() > limit + cutNotice.size()) {
        CutToLimit();
    }
    file.Close();
}

void ScenarioLog::CutToLimit() {
    std::string content;
    platform::ReadFile(path, 4 * limit, content);
    StartAgainWith(content);
}

void ScenarioLog::StartAgainWith(std::string_view end) {
    // In place: a reader that follows the file keeps it, and no second copy lies on the disk meanwhile.
    file.Close();
    Open();
    file.Write(cutNotice);
    file.Write(LastBytes(end, limit));
}

} // namespace scenario_runner

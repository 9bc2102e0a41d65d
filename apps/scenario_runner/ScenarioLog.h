#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files/File.h"
#include "platform/system/Error.h"

namespace scenario_runner {

/// The file with a scenario's output. Never writes through a link that the scenario creates at its path. Keeps the last
/// `limit` bytes, below a line that says so; until it is cut, the file may grow to twice that size, or to four times
/// while it cannot be read for cutting. Others may read it at any time. Not thread-safe.
class ScenarioLog {
public:
    ScenarioLog(std::wstring path, std::size_t limit);

    /// Creates the file, or truncates it.
    platform::Error Open();
    /// Bytes that cannot be written (disk full) are dropped.
    void Append(std::string_view bytes);
    /// Cuts the file to the limit and closes it.
    void Close();

private:
    std::uint64_t MostUncut() const { return std::uint64_t{4} * limit; }
    void CutToLimit(bool atAnyCost);
    /// Returns false if the file cannot be reopened; it is then unchanged.
    [[nodiscard]] bool StartAgainWith(std::string_view end);

    std::wstring path;
    std::size_t limit;
    platform::File file;
};

} // namespace scenario_runner

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files/File.h"
#include "platform/system/Error.h"

namespace scenario_runner {

/// The file with what a scenario printed; a link that the scenario puts in its place is not written through. Of more
/// than `limit` bytes the end is kept, below a line that says so; while it is written the file holds up to twice as
/// much, and four times as much while the file cannot be read to be cut. Others may read it at any time. One thread at
/// a time.
class ScenarioLog {
public:
    ScenarioLog(std::wstring path, std::size_t limit);

    /// Makes the file, empty.
    platform::Error Open();
    /// What cannot be written (disk full) is dropped.
    void Append(std::string_view bytes);
    /// Cuts the file to the limit and closes it.
    void Close();

private:
    std::uint64_t MostUncut() const { return std::uint64_t{4} * limit; }
    void CutToLimit(bool atAnyCost);
    /// False when the file cannot be opened anew; it stays as it is then.
    [[nodiscard]] bool StartAgainWith(std::string_view end);

    std::wstring path;
    std::size_t limit;
    platform::File file;
};

} // namespace scenario_runner

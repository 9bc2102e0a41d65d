#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/json/PlaceFinder.h"
#include "formats/json/TypeDescriptor.h"

/// Reads JSON texts into records. The input is one value of strict JSON, nested at most 64 levels deep. Threads: any.
namespace json {

/// The maximum size of a job list or jobs file. Units: bytes.
inline constexpr std::size_t largestText = std::size_t{256} << 20;
/// The maximum size of other files: settings, manifests, reports of scenarios. Units: bytes.
inline constexpr std::size_t largestSmallFile = std::size_t{4} << 20;

/// Reads UTF-8, with or without a byte order mark, into `root`. Unknown members are ignored; `unknownMembers`, if
/// given, receives messages about the first of them, also for a rejected text. On failure returns false, leaves `root`
/// partially filled, and sets `problem`: "line 3, column 14: scenario.inputs[0].cadName: expected text, found a
/// number".
[[nodiscard]] bool ReadSlot(std::string bytes, Slot root, std::wstring& problem,
                            std::vector<std::wstring>* unknownMembers = nullptr);
/// As above, from wide text.
[[nodiscard]] bool ReadSlot(std::wstring_view text, Slot root, std::wstring& problem,
                            std::vector<std::wstring>* unknownMembers = nullptr);

/// Reads a file of at most `limit` bytes. On failure returns false and sets `problem`, which names the file.
[[nodiscard]] bool LoadFile(const std::wstring& path, std::size_t limit, std::string& bytes, std::wstring& problem);

/// Returns the position of a value in a file as it is now: "line 3, column 14". Returns an empty text if the value
/// cannot be found.
std::wstring PlaceInFile(const std::wstring& path, std::size_t limit, const std::vector<Step>& way);

/// Prefixes a problem with its file: "C:\a.json, line 3, column 14: ..."
std::wstring ProblemInFile(const std::wstring& path, const std::wstring& problem);

/// As `ReadSlot`, from a file of at most `limit` bytes. `problem` names the file and the position. The messages in
/// `unknownMembers` contain the position only; `ProblemInFile` adds the file.
[[nodiscard]] bool ReadFileSlot(const std::wstring& path, std::size_t limit, Slot root, std::wstring& problem,
                                std::vector<std::wstring>* unknownMembers = nullptr);

/// Reads one value from text (`std::string` in UTF-8, or `std::wstring_view`) under a rule. On failure returns false
/// and leaves `value` unchanged.
template <typename Rule = AnyValue, typename Text, typename Value>
[[nodiscard]] bool Read(Text text, Value& value, std::wstring& problem,
                        std::vector<std::wstring>* unknownMembers = nullptr) {
    Value fresh{};
    if (!ReadSlot(std::move(text), SlotOf<Rule>(fresh), problem, unknownMembers)) {
        return false;
    }
    value = std::move(fresh);
    return true;
}

/// Reads one value from a file as `ReadFileSlot` does. On failure returns false and leaves `value` unchanged.
template <typename Value>
[[nodiscard]] bool ReadFile(const std::wstring& path, std::size_t limit, Value& value, std::wstring& problem,
                            std::vector<std::wstring>* unknownMembers = nullptr) {
    Value fresh{};
    if (!ReadFileSlot(path, limit, SlotOf(fresh), problem, unknownMembers)) {
        return false;
    }
    value = std::move(fresh);
    return true;
}

} // namespace json

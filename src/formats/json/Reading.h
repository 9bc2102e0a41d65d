#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/json/PlaceFinder.h"
#include "formats/json/Shape.h"

/// Reading JSON texts into records. What is read: one value, strict JSON, at most 64 levels deep. Any thread.
namespace json {

/// The largest text that is read: the job list and jobs files.
inline constexpr std::size_t largestText = std::size_t{256} << 20;
/// For the files that describe one thing: settings, manifests, what a scenario reports.
inline constexpr std::size_t largestSmallFile = std::size_t{4} << 20;

/// Fills `root` from UTF-8 with or without a byte order mark. False when anything is wrong; `root` then holds parts of
/// the text, and `problem` says what: "line 3, column 14: scenario.inputs[0].cadName: expected text, found a number".
/// `unknownMembers`: takes what to say of the first members that no record has, also of a text that is refused; such
/// are passed over.
[[nodiscard]] bool ReadTarget(std::string bytes, Target root, std::wstring& problem,
                              std::vector<std::wstring>* unknownMembers = nullptr);
/// The same from wide text.
[[nodiscard]] bool ReadTarget(std::wstring_view text, Target root, std::wstring& problem,
                              std::vector<std::wstring>* unknownMembers = nullptr);

/// The bytes of a file of at most `limit`; `problem` names the file.
[[nodiscard]] bool LoadFile(const std::wstring& path, std::size_t limit, std::string& bytes, std::wstring& problem);

/// Where a value begins in a file as it stands now: "line 3, column 14". Empty when it cannot be told.
std::wstring PlaceInFile(const std::wstring& path, std::size_t limit, const std::vector<Step>& way);

/// "C:\a.json, line 3, column 14: ..."
std::wstring ProblemInFile(const std::wstring& path, const std::wstring& problem);

/// Reads one value from text (`std::string`: UTF-8; `std::wstring_view`). A failure leaves `value` as it was.
template <typename Text, typename Value>
[[nodiscard]] bool Read(Text text, Value& value, std::wstring& problem,
                        std::vector<std::wstring>* unknownMembers = nullptr) {
    Value fresh{};
    if (!ReadTarget(std::move(text), TargetOf(fresh), problem, unknownMembers)) {
        return false;
    }
    value = std::move(fresh);
    return true;
}

/// Reads one value from a file. A failure leaves `value` as it was; `problem` then names the file and the place in it.
/// What `unknownMembers` takes names the place alone (`ProblemInFile`).
template <typename Value>
[[nodiscard]] bool ReadFile(const std::wstring& path, std::size_t limit, Value& value, std::wstring& problem,
                            std::vector<std::wstring>* unknownMembers = nullptr) {
    std::string bytes;
    if (!LoadFile(path, limit, bytes, problem)) {
        return false;
    }
    if (Read(std::move(bytes), value, problem, unknownMembers)) {
        return true;
    }
    problem = ProblemInFile(path, problem);
    return false;
}

} // namespace json

#include "controller_web/http/ByteRange.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace web {
namespace {

constexpr std::string_view unit = "bytes=";

std::optional<std::uint64_t> ReadNumber(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

ByteRange Part(std::uint64_t first, std::uint64_t last, std::uint64_t size) {
    if (first >= size) {
        return {ByteRange::Kind::Unsatisfiable, 0, 0};
    }
    return {ByteRange::Kind::Part, first, std::min(last, size - 1) - first + 1};
}

ByteRange End(std::uint64_t length, std::uint64_t size) {
    return length == 0 ? ByteRange{ByteRange::Kind::Unsatisfiable, 0, 0}
                       : Part(size - std::min(length, size), size, size);
}

} // namespace

std::string ByteRange::Header(std::uint64_t size) const {
    const std::string part =
        kind == Kind::Unsatisfiable ? "*" : std::to_string(first) + "-" + std::to_string(first + length - 1);
    return "bytes " + part + "/" + std::to_string(size);
}

ByteRange ReadByteRange(std::string_view header, std::uint64_t size) {
    const std::size_t dash = header.find('-');
    if (!header.starts_with(unit) || dash == std::string_view::npos) {
        return {};
    }
    const std::string_view from = header.substr(unit.size(), dash - unit.size());
    const std::string_view to = header.substr(dash + 1);
    const auto first = ReadNumber(from);
    const auto last = ReadNumber(to);
    if (from.empty() && last) {
        return End(*last, size);
    }
    if (first && to.empty()) {
        return Part(*first, size, size);
    }
    return first && last && *first <= *last ? Part(*first, *last, size) : ByteRange();
}

} // namespace web

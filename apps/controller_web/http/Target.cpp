#include "controller_web/http/Target.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "text/Hexadecimal.h"

namespace web {
namespace {

/// Thrown in this file only.
struct NoTarget {};

std::uint32_t DigitAt(std::string_view text, std::size_t place) {
    const int value = place < text.size() ? text::HexadecimalValue(static_cast<unsigned char>(text[place])) : -1;
    if (value < 0) {
        throw NoTarget{};
    }
    return static_cast<std::uint32_t>(value);
}

std::string Decoded(std::string_view text, bool isQuery) {
    std::string decoded;
    for (std::size_t place = 0; place < text.size(); ++place) {
        char byte = text[place];
        if (byte == '%') {
            byte = static_cast<char>(DigitAt(text, place + 1) * 16 + DigitAt(text, place + 2));
            place += 2;
        } else if (byte == '+' && isQuery) {
            byte = ' ';
        }
        if (byte == '\0') {
            throw NoTarget{};
        }
        decoded += byte;
    }
    return decoded;
}

/// Removes the text up to `separator` from `text` and returns it.
std::string_view TakeUntil(char separator, std::string_view& text) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

std::vector<std::string> PathOf(std::string_view text) {
    std::vector<std::string> path;
    while (!text.empty()) {
        const bool isLast = text.find('/') == std::string_view::npos;
        path.push_back(Decoded(TakeUntil('/', text), false));
        if (text.empty() && !isLast) {
            path.emplace_back();
        }
    }
    return path;
}

std::multimap<std::string, std::string> QueryOf(std::string_view text) {
    std::multimap<std::string, std::string> query;
    while (!text.empty()) {
        std::string_view value = TakeUntil('&', text);
        const std::string_view name = TakeUntil('=', value);
        if (!name.empty()) {
            query.emplace(Decoded(name, true), Decoded(value, true));
        }
    }
    return query;
}

} // namespace

std::optional<Target> ReadTarget(std::string_view target) {
    if (!target.starts_with('/')) {
        return std::nullopt;
    }
    std::string_view query = target.substr(1);
    const std::string_view path = TakeUntil('?', query);
    try {
        return Target{PathOf(path), QueryOf(query)};
    } catch (const NoTarget&) {
        return std::nullopt;
    }
}

} // namespace web

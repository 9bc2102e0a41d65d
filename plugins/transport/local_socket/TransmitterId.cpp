#include "transport/local_socket/TransmitterId.h"

#include <algorithm>
#include <utility>

namespace local_socket {
namespace {

constexpr std::size_t maximumPlaceName = 64;
constexpr std::wstring_view allowedInNames = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.-";

bool TakePrefix(std::wstring_view& text, std::wstring_view prefix) {
    if (text.substr(0, prefix.size()) != prefix) {
        return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

std::optional<End> TakeEnd(std::wstring_view& text) {
    if (TakePrefix(text, L"engine:")) {
        return End::Server;
    }
    if (TakePrefix(text, L"client:")) {
        return End::Client;
    }
    return std::nullopt;
}

bool IsPlaceName(std::wstring_view name) {
    return !name.empty() && name.size() <= maximumPlaceName &&
           name.find_first_not_of(allowedInNames) == std::wstring_view::npos;
}

} // namespace

std::optional<TransmitterId> ParseTransmitterId(std::wstring_view text) {
    const std::optional<End> end = TakeEnd(text);
    if (!end || !IsPlaceName(text)) {
        return std::nullopt;
    }
    std::string name(text.size(), '\0');
    std::transform(text.begin(), text.end(), name.begin(), [](wchar_t letter) { return static_cast<char>(letter); });
    return TransmitterId{*end, std::move(name)};
}

} // namespace local_socket

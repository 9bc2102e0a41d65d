#include "controller_web/http/PublicAddress.h"

#include <algorithm>

namespace web {
namespace {

constexpr std::string_view lowerAndDigits = "abcdefghijklmnopqrstuvwxyz0123456789";

bool HasOnly(std::string_view text, std::string_view further) {
    return std::all_of(text.begin(), text.end(), [further](char letter) {
        return lowerAndDigits.find(letter) != std::string_view::npos || further.find(letter) != std::string_view::npos;
    });
}

} // namespace

std::optional<PublicAddress> ReadPublicAddress(std::string_view address) {
    const std::size_t scheme = address.starts_with("https://") ? 8 : address.starts_with("http://") ? 7 : 0;
    const std::string_view rest = address.substr(scheme);
    const std::size_t hostEnd = std::min(rest.find('/'), rest.size());
    const std::string_view host = rest.substr(0, hostEnd);
    const std::string_view path = rest.substr(hostEnd);
    if (scheme == 0 || host.empty() || !HasOnly(host, ".-:[]") || !HasOnly(path, "/ABCDEFGHIJKLMNOPQRSTUVWXYZ._-~") ||
        path.find("//") != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string slash = path.ends_with('/') ? "" : "/";
    return PublicAddress{std::string(address.substr(0, scheme + hostEnd)), std::string(host),
                         std::string(path) + slash};
}

} // namespace web

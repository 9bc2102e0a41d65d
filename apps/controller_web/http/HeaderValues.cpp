#include "controller_web/http/HeaderValues.h"

#include <algorithm>
#include <vector>

namespace web {
namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

std::vector<std::string_view> Parts(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        parts.push_back(Trimmed(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool AreEqualNames(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char left, char right) { return Lower(left) == Lower(right); });
}

/// "gzip;q=0" refuses it.
bool IsAcceptedGzip(std::string_view coding) {
    const std::vector<std::string_view> parts = Parts(coding, ';');
    const bool isRefused = parts.size() > 1 && parts[1].starts_with("q=0") &&
                           parts[1].find_first_not_of("0.", 2) == std::string_view::npos;
    return !parts.empty() && AreEqualNames(parts[0], "gzip") && !isRefused;
}

} // namespace

std::optional<std::string_view> CookieValue(std::string_view header, std::string_view name) {
    for (const std::string_view cookie : Parts(header, ';')) {
        if (cookie.size() > name.size() && cookie.starts_with(name) && cookie[name.size()] == '=') {
            return cookie.substr(name.size() + 1);
        }
    }
    return std::nullopt;
}

bool MatchesEntityTag(std::string_view ifNoneMatch, std::string_view tag) {
    const std::vector<std::string_view> tags = Parts(ifNoneMatch, ',');
    return std::any_of(tags.begin(), tags.end(), [tag](std::string_view known) {
        return known == "*" || known == tag || (known.starts_with("W/") && known.substr(2) == tag);
    });
}

bool AcceptsGzip(std::string_view acceptEncoding) {
    const std::vector<std::string_view> codings = Parts(acceptEncoding, ',');
    return std::any_of(codings.begin(), codings.end(), IsAcceptedGzip);
}

bool IsMediaType(std::string_view contentType, std::string_view type) {
    const std::vector<std::string_view> parts = Parts(contentType, ';');
    return !parts.empty() && AreEqualNames(parts[0], type);
}

bool AreEqualSecrets(std::string_view one, std::string_view other) {
    int difference = one.size() == other.size() ? 0 : 1;
    for (std::size_t place = 0; place < std::min(one.size(), other.size()); ++place) {
        difference |= one[place] ^ other[place];
    }
    return difference == 0;
}

} // namespace web

#pragma once

#include <optional>
#include <string_view>

/// Values of headers. Pure functions; threads: any.
namespace web {

/// The value of a cookie in a header "Cookie" ("a=1; b=2"); nothing if it is missing. The first of several counts.
[[nodiscard]] std::optional<std::string_view> CookieValue(std::string_view header, std::string_view name);

/// True if a header "If-None-Match" names this entity tag ("\"1a2b\"", with its quotes) or "*". Weak tags match, too.
bool MatchesEntityTag(std::string_view ifNoneMatch, std::string_view tag);

/// True if a header "Accept-Encoding" accepts gzip.
bool AcceptsGzip(std::string_view acceptEncoding);

/// True if a header "Content-Type" names this type, whatever its parameters and case.
bool IsMediaType(std::string_view contentType, std::string_view type);

/// True if both texts are equal. The time depends on their lengths only, so that it tells nothing about a secret.
bool AreEqualSecrets(std::string_view one, std::string_view other);

} // namespace web

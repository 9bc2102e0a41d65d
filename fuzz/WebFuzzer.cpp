#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "controller_web/http/AccessRules.h"
#include "controller_web/http/ByteRange.h"
#include "controller_web/http/HeaderValues.h"
#include "controller_web/http/PublicAddress.h"
#include "controller_web/http/Target.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"

namespace {

/// The text up to the next line break, which is removed from `text`.
std::string TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// The lines of the input are the parts of a request.
web::RequestHead HeadOf(std::string_view lines) {
    web::RequestHead head{TakeLine(lines), TakeLine(lines)};
    for (std::string* const part :
         {&head.fetchSite, &head.cookie, &head.contentType, &head.range, &head.ifNoneMatch, &head.acceptEncoding}) {
        *part = TakeLine(lines);
    }
    head.origins = {TakeLine(lines)};
    while (!lines.empty()) {
        head.hosts.push_back(TakeLine(lines));
    }
    return head;
}

void CheckTarget(const std::string& text) {
    if (const auto target = web::ReadTarget(text)) {
        fuzz::Require(text.starts_with('/'), "a target begins with a slash");
        const auto hasNul = [](const std::string& part) { return part.find('\0') != std::string::npos; };
        fuzz::Require(std::none_of(target->path.begin(), target->path.end(), hasNul), "no part of a path has NUL");
        (void)web::IsUpload(*target);
    }
}

void CheckRange(const std::string& text, std::uint64_t size) {
    const web::ByteRange range = web::ReadByteRange(text, size);
    const bool isPart = range.kind == web::ByteRange::Kind::Part;
    fuzz::Require(!isPart || (range.length > 0 && range.first < size && range.length <= size - range.first),
                  "a part is within the content");
    if (range.kind != web::ByteRange::Kind::Whole) {
        fuzz::Require(range.Header(size).starts_with("bytes "), "a range can be named");
    }
}

void CheckHeaders(const web::RequestHead& head) {
    const auto cookie = web::CookieValue(head.cookie, "session");
    fuzz::Require(!cookie || head.cookie.find("session=" + std::string(*cookie)) != std::string::npos,
                  "the value of a cookie is in the header");
    fuzz::Require(web::MatchesEntityTag(head.ifNoneMatch + ", \"x\"", "\"x\""), "a tag is found behind anything");
    (void)web::AcceptsGzip(head.acceptEncoding);
    (void)web::IsMediaType(head.contentType, "application/json");
    fuzz::Require(web::AreEqualSecrets(head.cookie, head.range) == (head.cookie == head.range),
                  "equal texts are equal");
}

void CheckPublicAddress(const std::string& text) {
    if (const auto address = web::ReadPublicAddress(text)) {
        const std::string whole = address->origin + address->basePath;
        fuzz::Require(whole == text || whole == text + "/", "an address is its origin and its base path");
        fuzz::Require(web::ReadTarget(address->basePath).has_value(), "a base path is a target");
    }
}

/// What another server's page can send never passes.
void CheckRules(const web::RequestHead& head) {
    const web::AccessRules rules(8080, {}, false);
    if (rules.ForeignRefusal(head)) {
        return;
    }
    fuzz::Require(head.hosts.size() == 1, "a request names one host");
    fuzz::Require(head.hosts[0] == "127.0.0.1:8080" || head.hosts[0] == "localhost:8080", "the host is the own one");
    fuzz::Require(head.fetchSite != "cross-site" && head.fetchSite != "same-site", "the site is the own one");
    fuzz::Require(head.origins[0] == "http://127.0.0.1:8080" || head.origins[0] == "http://localhost:8080",
                  "the origin is the own one");
}

} // namespace

/// Reads the input as the parts of a request to the web page.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    const web::RequestHead head = HeadOf(bytes);
    CheckTarget(head.target);
    CheckTarget(std::string(bytes));
    CheckRange(head.range, size * 1000);
    CheckRange(std::string(bytes), ~std::uint64_t{0});
    CheckHeaders(head);
    CheckPublicAddress(std::string(bytes));
    CheckRules(head);
    return 0;
}

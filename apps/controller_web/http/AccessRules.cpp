#include "controller_web/http/AccessRules.h"

#include <algorithm>
#include <array>
#include <utility>

#include "controller_web/http/ErrorResponse.h"
#include "controller_web/http/HeaderValues.h"

namespace web {
namespace {

constexpr std::array<std::pair<std::string_view, Method>, 5> methods = {{{"GET", Method::Get},
                                                                         {"HEAD", Method::Get},
                                                                         {"POST", Method::Post},
                                                                         {"PUT", Method::Put},
                                                                         {"DELETE", Method::Delete}}};

bool Contains(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// "same-site" is refused, too: the pages of other servers on this machine are of the same site.
bool IsOwnSite(const RequestHead& head) {
    return head.fetchSite.empty() || head.fetchSite == "same-origin" || head.fetchSite == "none";
}

bool IsChange(const RequestHead& head) {
    return MethodOf(head) != Method::Get;
}

Response MethodRefusal() {
    Response response =
        ErrorResponse(405, "method_not_allowed", "This method is not one of GET, HEAD, POST, PUT, DELETE.");
    response.headers.emplace_back("Allow", "GET, HEAD, POST, PUT, DELETE");
    return response;
}

/// Other types can be sent by forms of foreign pages without the browser asking first.
bool HasRightType(const RequestHead& head, const Target& target) {
    const auto method = MethodOf(head);
    return (method != Method::Post && method != Method::Put) ||
           IsMediaType(head.contentType, IsUpload(target) ? "application/octet-stream" : "application/json");
}

} // namespace

AccessRules::AccessRules(std::uint16_t port, const std::optional<PublicAddress>& publicAddress, bool readOnly)
    : isReadOnly(readOnly) {
    for (const char* const name : {"127.0.0.1", "localhost"}) {
        hosts.push_back(std::string(name) + ":" + std::to_string(port));
        origins.push_back("http://" + hosts.back());
    }
    if (publicAddress) {
        hosts.push_back(publicAddress->host);
        origins.push_back(publicAddress->origin);
    }
}

bool AccessRules::IsOwnHost(const RequestHead& head) const {
    return head.hosts.size() == 1 && Contains(hosts, head.hosts.front());
}

/// Browsers send it with each change; without it a request does not come from the page.
bool AccessRules::IsOwnOrigin(const RequestHead& head) const {
    return head.origins.empty() ? !IsChange(head) : head.origins.size() == 1 && Contains(origins, head.origins.front());
}

std::optional<Response> AccessRules::ForeignRefusal(const RequestHead& head) const {
    if (!IsOwnHost(head)) {
        return ErrorResponse(
            421, "wrong_host",
            "The request names another host than this server. Use the link that 'cadjobs web' prints.");
    }
    if (!IsOwnSite(head)) {
        return ErrorResponse(403, "foreign_site", "Another site sent this request. Type or paste the address instead.");
    }
    if (!IsOwnOrigin(head)) {
        return ErrorResponse(
            403, "foreign_origin",
            "A change needs the header \"Origin\" with the address of this server, as its page sends it.");
    }
    return std::nullopt;
}

std::optional<Response> AccessRules::UseRefusal(const RequestHead& head, const Target& target) const {
    if (!MethodOf(head)) {
        return MethodRefusal();
    }
    if (!HasRightType(head, target)) {
        return ErrorResponse(415, "wrong_type",
                             "The content must have the type application/json, a file application/octet-stream.");
    }
    if (isReadOnly && IsChange(head)) {
        return ErrorResponse(403, "read_only", "This server only shows the queue: it was started with --read-only.");
    }
    return std::nullopt;
}

std::optional<Method> MethodOf(const RequestHead& head) {
    const auto found = std::find_if(methods.begin(), methods.end(),
                                    [&head](const auto& method) { return method.first == head.method; });
    return found == methods.end() ? std::nullopt : std::optional(found->second);
}

bool IsUpload(const Target& target) {
    static const std::vector<std::string> uploads = {"api", "v1", "uploads"};
    return target.path == uploads;
}

} // namespace web

#include "controller_web/http/Site.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

#include "controller_web/http/ErrorResponse.h"
#include "controller_web/http/HeaderValues.h"

namespace web {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> protection = {{
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; connect-src 'self' blob:; "
     "worker-src 'self'; manifest-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; "
     "require-trusted-types-for 'script'; trusted-types default"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Cache-Control", "no-store"},
}};

constexpr std::string_view plainText = "text/plain; charset=utf-8";

bool IsOfInterface(const Target& target) {
    return !target.path.empty() &&
           (target.path[0] == "api" || (target.path[0] == "metrics" && target.path.size() == 1));
}

std::string Joined(const std::vector<std::string>& path) {
    std::string joined;
    for (const std::string& part : path) {
        joined += (joined.empty() ? "" : "/") + part;
    }
    return joined;
}

/// The page and programs get the error object, a person who opens an address gets a sentence.
Response SessionRefusal(const Target& target) {
    constexpr std::string_view message =
        "You are not signed in here. 'cadjobs web' prints a link that signs your browser in.\n";
    if (IsOfInterface(target)) {
        return ErrorResponse(401, "unauthorized", message.substr(0, message.size() - 1));
    }
    return TextResponse(401, plainText, std::string(message));
}

bool IsLogin(const Target& target) {
    return target.path.size() == 1 && target.path[0] == "login";
}

bool IsVisible(char letter) {
    return letter >= ' ' && letter != '\x7f';
}

bool IsPlain(const std::string& text) {
    // Bytes beyond ASCII are negative where char is signed.
    return std::all_of(text.begin(), text.end(), [](char letter) { return IsVisible(letter) || letter < 0; });
}

bool Has(const Response& response, std::string_view name) {
    return std::any_of(response.headers.begin(), response.headers.end(),
                       [name](const auto& header) { return header.first == name; });
}

} // namespace

Site::Site(SiteOptions siteOptions, Assets files, Handler& requestHandler)
    : options(std::move(siteOptions)), basePath(options.publicAddress ? options.publicAddress->basePath : "/"),
      // Browsers send cookies to all ports of a host: another server of the user has one of its own.
      cookieName("controller_session_" + std::to_string(options.port)),
      rules(options.port, options.publicAddress, options.isReadOnly), links(options.linkDirectory, options.now),
      sessions(options.now), assets(std::move(files)), handler(requestHandler) {}

Admission Site::Admit(const RequestHead& head) {
    if (auto refusal = rules.ForeignRefusal(head)) {
        return {std::move(refusal)};
    }
    auto read = ReadTarget(head.target);
    if (!read) {
        return {ErrorResponse(400, "bad_target", "The address of the request cannot be read.")};
    }
    Target target = WithoutBasePath(std::move(*read));
    if (auto answer = Decide(head, target)) {
        return {std::move(answer)};
    }
    Admission admission;
    admission.isUpload = IsUpload(target) && MethodOf(head) == Method::Post;
    admission.bodyLimit = admission.isUpload ? uploadLimit : jsonLimit;
    admission.request = {*MethodOf(head),
                         std::move(target.path),
                         std::move(target.query),
                         head.range,
                         head.ifNoneMatch,
                         head.lastEventId,
                         {},
                         nullptr};
    return admission;
}

/// A proxy may remove the base path or leave it.
Target Site::WithoutBasePath(Target target) const {
    const auto base = ReadTarget(basePath);
    // The last part of the base path is the empty one after its last slash.
    const std::size_t length = base && !base->path.empty() ? base->path.size() - 1 : 0;
    if (length > 0 && target.path.size() > length &&
        std::equal(target.path.begin(), target.path.begin() + static_cast<std::ptrdiff_t>(length),
                   base->path.begin())) {
        target.path.erase(target.path.begin(), target.path.begin() + static_cast<std::ptrdiff_t>(length));
    }
    if (target.path.size() == 1 && target.path[0].empty()) {
        target.path.clear();
    }
    return target;
}

std::optional<Response> Site::Decide(const RequestHead& head, const Target& target) {
    if (IsLogin(target)) {
        return LogIn(head, target);
    }
    if (!HasSession(head)) {
        return SessionRefusal(target);
    }
    if (auto refusal = rules.UseRefusal(head, target)) {
        return refusal;
    }
    return IsOfInterface(target) ? std::nullopt : PageAnswer(head, target);
}

/// HEAD would use the link up without signing anybody in.
Response Site::LogIn(const RequestHead& head, const Target& target) {
    if (head.method != "GET") {
        return ErrorResponse(405, "method_not_allowed", "The link is opened with GET.");
    }
    const auto secret = target.query.find("token");
    if (secret == target.query.end() || !links.Redeem(secret->second)) {
        return TextResponse(401, plainText,
                            "This link was used already or has expired. 'cadjobs web' prints a new one.\n");
    }
    const bool isSecure = options.publicAddress && options.publicAddress->IsSecure();
    Response response;
    response.status = 303;
    response.headers = {{"Location", basePath},
                        {"Set-Cookie", cookieName + "=" + sessions.Open() + "; Path=" + basePath +
                                           "; HttpOnly; SameSite=Strict" + (isSecure ? "; Secure" : "")}};
    return response;
}

bool Site::HasSession(const RequestHead& head) {
    const auto secret = CookieValue(head.cookie, cookieName);
    return secret && sessions.Use(*secret);
}

std::optional<Response> Site::PageAnswer(const RequestHead& head, const Target& target) const {
    if (MethodOf(head) != Method::Get) {
        return ErrorResponse(405, "method_not_allowed", "The page can only be read.");
    }
    auto answer = assets.Answer(Joined(target.path), head);
    return answer ? std::move(answer)
                  : TextResponse(404, plainText, "There is no such page. The list of jobs is at " + basePath + "\n");
}

Response Site::Handle(const Request& request) noexcept {
    try {
        return handler.Handle(request);
    } catch (const std::exception& failure) {
        return ErrorResponse(500, "internal_error", failure.what());
    }
}

std::string Site::Address() const {
    const std::string origin =
        options.publicAddress ? options.publicAddress->origin : "http://127.0.0.1:" + std::to_string(options.port);
    return origin + basePath;
}

void Secure(Response& response) {
    const bool isSound = std::all_of(response.headers.begin(), response.headers.end(), [](const auto& header) {
        return IsPlain(header.first) && IsPlain(header.second);
    });
    if (!isSound) {
        response = ErrorResponse(500, "internal_error", "The answer has a header with control characters.");
    }
    for (const auto& [name, value] : protection) {
        if (!Has(response, name)) {
            response.headers.emplace_back(name, value);
        }
    }
}

} // namespace web

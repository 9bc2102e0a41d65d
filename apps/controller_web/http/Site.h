#pragma once

#include "controller_web/http/AccessRules.h"
#include "controller_web/http/Assets.h"
#include "controller_web/http/Handler.h"
#include "controller_web/http/OneTimeLinks.h"
#include "controller_web/http/Sessions.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace web {

struct SiteOptions {
    /// On which the server listens.
    std::uint16_t port = 0;
    std::optional<PublicAddress> publicAddress = {};
    bool isReadOnly = false;
    /// The directory of the one-time links.
    std::wstring linkDirectory;
    /// The directory of uploads while they arrive.
    std::wstring uploadDirectory = {};
    /// Units: seconds since 1970.
    std::function<std::int64_t()> now;
};

/// What the server does with a request before it reads its body.
struct Admission {
    /// The answer that needs neither the body nor the handler.
    std::optional<Response> answer;
    /// For the handler, still without body.
    Request request = {};
    /// Units: bytes.
    std::uint64_t bodyLimit = 0;
    /// The body goes to a file in `SiteOptions::uploadDirectory`.
    bool isUpload = false;
};

/// The requests and answers of the server, without the network: who may ask, one-time links, sessions, the page, and
/// the handler of everything else.
class Site {
public:
    static constexpr std::uint64_t jsonLimit = std::uint64_t{16} << 20;
    static constexpr std::uint64_t uploadLimit = std::uint64_t{512} << 20;

    /// `requestHandler` must outlive this object.
    Site(SiteOptions siteOptions, Assets files, Handler& requestHandler);

    /// Threads: one at a time.
    Admission Admit(const RequestHead& head);

    /// The handler's answer. A handler that fails has answered 500. Threads: several at once; may block.
    Response Handle(const Request& request) noexcept;

    const std::wstring& UploadDirectory() const { return options.uploadDirectory; }

    /// The address of the page, with its last slash: "http://127.0.0.1:8080/".
    std::string Address() const;

private:
    Target WithoutBasePath(Target target) const;
    std::optional<Response> Decide(const RequestHead& head, const Target& target);
    Response LogIn(const RequestHead& head, const Target& target);
    bool HasSession(const RequestHead& head);
    std::optional<Response> PageAnswer(const RequestHead& head, const Target& target) const;

    SiteOptions options;
    std::string basePath;
    std::string cookieName;
    AccessRules rules;
    OneTimeLinks links;
    Sessions sessions;
    Assets assets;
    Handler& handler;
};

/// Adds the headers that protect the user's browser, unless the response has them. A header that would break the
/// response, for example by a line break, makes it an error 500.
void Secure(Response& response);

} // namespace web

#pragma once

#include "controller_web/http/PublicAddress.h"
#include "controller_web/http/Request.h"
#include "controller_web/http/RequestHead.h"
#include "controller_web/http/Response.h"
#include "controller_web/http/Target.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace web {

/// Which requests the server takes from whom. Pure rules; threads: any.
class AccessRules {
public:
    /// The server's port on this machine; the address at which a proxy makes it reachable, if there is one.
    AccessRules(std::uint16_t port, const std::optional<PublicAddress>& publicAddress, bool isReadOnly);

    /// The answer to a request whose sender may be a page of another server: of another origin, or of a name that leads
    /// to this machine; nothing if it is one of the user's browsers or programs. Called before anything else.
    [[nodiscard]] std::optional<Response> ForeignRefusal(const RequestHead& head) const;

    /// The answer to a request of the user's that is not allowed: by its method, its content type, or because the
    /// server is read-only.
    [[nodiscard]] std::optional<Response> UseRefusal(const RequestHead& head, const Target& target) const;

private:
    bool IsOwnHost(const RequestHead& head) const;
    bool IsOwnOrigin(const RequestHead& head) const;

    std::vector<std::string> hosts;
    std::vector<std::string> origins;
    bool isReadOnly;
};

/// The method of a request; HEAD is `Get`. Nothing for any other method.
[[nodiscard]] std::optional<Method> MethodOf(const RequestHead& head);

/// True if the request brings a file rather than JSON.
bool IsUpload(const Target& target);

} // namespace web

#pragma once

#include "kit/web/RawClient.h"

#include <cstdint>
#include <string>

namespace test_support {

/// "http://127.0.0.1:8080/login?token=...", as a server prints it.
struct LoginLink {
    std::uint16_t port = 0;
    /// From the slash behind the port on.
    std::string target;
};

/// The link in an output; port 0 if there is none.
LoginLink LinkIn(const std::string& output);

/// A client of a server of the web page that has opened its link. Each request has a connection of its own.
class SignedInBrowser {
public:
    /// `output`: what the server has printed.
    explicit SignedInBrowser(const std::string& output);

    std::uint16_t Port() const { return link.port; }

    /// A request with the headers that the page's own requests have.
    std::string Request(const std::string& method, const std::string& target, const std::string& body = {}) const;

    RawAnswer Get(const std::string& target) const { return Ask(Request("GET", target)); }
    RawAnswer Change(const std::string& method, const std::string& target, const std::string& json) const {
        return Ask(Request(method, target, json));
    }

private:
    RawAnswer Ask(const std::string& request) const;

    LoginLink link;
    /// Empty if the link was not taken.
    std::string cookie;
};

} // namespace test_support

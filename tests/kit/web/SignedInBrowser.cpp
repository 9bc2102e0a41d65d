#include "kit/web/SignedInBrowser.h"

namespace test_support {

LoginLink LinkIn(const std::string& output) {
    const std::string begin = "http://127.0.0.1:";
    const std::size_t place = output.find(begin);
    if (place == std::string::npos) {
        return {};
    }
    const std::size_t slash = output.find('/', place + begin.size());
    const std::string port = output.substr(place + begin.size(), slash - place - begin.size());
    return {static_cast<std::uint16_t>(std::stoi(port)),
            output.substr(slash, output.find_first_of("\r\n", slash) - slash)};
}

SignedInBrowser::SignedInBrowser(const std::string& output) : link(LinkIn(output)) {
    const std::string header = Ask(Request("GET", link.target)).Header("Set-Cookie");
    cookie = header.substr(0, header.find(';'));
}

std::string SignedInBrowser::Request(const std::string& method, const std::string& target,
                                     const std::string& body) const {
    const std::string host = "127.0.0.1:" + std::to_string(link.port);
    std::string text = method + " " + target + " HTTP/1.1\r\nHost: " + host + "\r\nCookie: " + cookie + "\r\n";
    if (method != "GET") {
        text += "Origin: http://" + host + "\r\nContent-Type: application/json\r\n" +
                "Content-Length: " + std::to_string(body.size()) + "\r\n";
    }
    return text + "\r\n" + body;
}

RawAnswer SignedInBrowser::Ask(const std::string& request) const {
    RawClient client(link.port);
    (void)client.Send(request);
    return client.Receive();
}

} // namespace test_support

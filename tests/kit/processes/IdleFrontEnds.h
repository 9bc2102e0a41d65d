#pragma once

#include "transport/local_socket/Frame.h"
#include "transport/local_socket/Network.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// Front ends that connect to a host, greet, and stay idle until destruction. Fails the test if there is no host.
class IdleFrontEnds {
public:
    IdleFrontEnds(const std::wstring& endpointName, std::size_t count);

private:
    const std::string handshake = local_socket::EncodeHandshake();
    const std::unique_ptr<local_socket::Network> network = local_socket::MakeLocalNetwork([](const std::wstring&) {});
    std::vector<std::unique_ptr<local_socket::Channel>> channels;
};

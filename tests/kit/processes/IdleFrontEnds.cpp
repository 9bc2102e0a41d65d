#include "kit/processes/IdleFrontEnds.h"

#include "text/Text.h"

#include <mutex>
#include <utility>

#include <gtest/gtest.h>

IdleFrontEnds::IdleFrontEnds(const std::wstring& endpointName, std::size_t count) {
    for (std::size_t number = 0; number < count; ++number) {
        local_socket::Connection connection = network->Connect(text::ToUtf8(endpointName));
        if (!connection.channel) {
            ADD_FAILURE() << "front end " << number << ": " << text::ToUtf8(connection.failure);
            return;
        }
        const std::lock_guard<std::mutex> guard(network->Lock());
        connection.channel->Write(handshake.data(), handshake.size(), [](bool, std::size_t) {});
        channels.push_back(std::move(connection.channel));
    }
}

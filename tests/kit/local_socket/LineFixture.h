#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/doubles/RecordingHandler.h"
#include "kit/local_socket/EndpointNames.h"
#include "kit/local_socket/RecordingLog.h"
#include "transport/local_socket/Client.h"
#include "transport/local_socket/Server.h"

/// Both ends over real sockets or pipes, in one process.
class LineFixture : public testing::Test {
protected:
    std::unique_ptr<local_socket::Server> Engine() {
        return local_socket::Server::Listen(place, local_socket::MakeLocalNetwork(log.Function()), limits,
                                            log.Function());
    }

    std::unique_ptr<local_socket::Client> MakeClient() {
        return std::make_unique<local_socket::Client>(place, local_socket::MakeLocalNetwork(log.Function()), limits,
                                                      log.Function());
    }

    /// Waits until the client has noticed the end of the engine and handled what arrived before.
    static void WaitUntilDisconnected(const local_socket::Client& client) {
        const auto end = std::chrono::steady_clock::now() + test_support::timeout;
        while (client.IsConnected() && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
    }

    const std::string place = NewEndpointName();
    local_socket::Limits limits;
    RecordingLog log;
};

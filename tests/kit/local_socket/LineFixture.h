#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

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

    const std::string place = NewEndpointName();
    local_socket::Limits limits;
    RecordingLog log;
};

#pragma once

#include "kit/Collected.h"
#include "transport/local_socket/Network.h"

#include <string>

/// Records log lines.
class RecordingLog {
public:
    local_socket::Network::Log Function() {
        return [this](const std::wstring& line) { lines.Add(line); };
    }

    Collected<std::wstring> lines;
};

#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "companion/ControllerCSWrapper.h"
#include "local_socket/ClientEnd.h"
#include "local_socket/EngineEnd.h"
#include "local_socket/ProcessEnd.h"
#include "local_socket/TransmitterId.h"
#include "platform/Export.h"
#include "platform/Text.h"

namespace local_socket {
namespace {

void Log(const std::wstring& message) {
    ControllerCSWrapper::WriteWarnLog(message);
}

std::unique_ptr<SocketTransmitter> MakeTransmitter(const TransmitterId& id) {
    if (id.end == End::Engine) {
        return EngineEnd::Listen(id.name, MakeLocalNetwork(Log), Limits{}, Log);
    }
    return std::make_unique<ClientEnd>(id.name, MakeLocalNetwork(Log), Limits{}, Log);
}

/// The transmitters that were given out, by their ids.
class Transmitters {
public:
    EventTransmitter* Get(const std::wstring& text) {
        const std::optional<TransmitterId> id = ParseTransmitterId(text);
        if (!id) {
            Log(L"No event line \"" + text + L"\": use \"engine:NAME\" or \"client:NAME\", NAME being 1 to 64 of " +
                L"A-Z a-z 0-9 _ . -");
            return nullptr;
        }
        const std::lock_guard<std::mutex> guard(lock);
        std::unique_ptr<SocketTransmitter>& transmitter = transmitters[text];
        if (!transmitter) {
            transmitter = MakeTransmitter(*id);
        }
        return transmitter.get();
    }

    void Stop() {
        const std::lock_guard<std::mutex> guard(lock);
        for (const auto& [id, transmitter] : transmitters) {
            if (transmitter) {
                // A handler that does not end is left to the end of the process.
                (void)transmitter->Stop(handlerPatience);
            }
        }
    }

private:
    std::mutex lock;
    std::map<std::wstring, std::unique_ptr<SocketTransmitter>> transmitters;
};

/// Never destroyed: other threads of the program may send events until the very end.
Transmitters& TheTransmitters() {
    static Transmitters& transmitters = []() -> Transmitters& {
        CallAtProcessEnd([] { TheTransmitters().Stop(); });
        return *std::make_unique<Transmitters>().release();
    }();
    return transmitters;
}

} // namespace
} // namespace local_socket

extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    try {
        return local_socket::TheTransmitters().Get(transmitterId);
    } catch (const std::exception& failure) {
        local_socket::Log(L"No event line \"" + transmitterId + L"\": " + platform::FromUtf8(failure.what()));
        return nullptr;
    }
}

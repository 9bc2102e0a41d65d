#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "CommonControllerLib/Export.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/system/NeverDestroyed.h"
#include "services/ResponseTimeout.h"
#include "text/Text.h"
#include "transport/local_socket/Client.h"
#include "transport/local_socket/ProcessEnd.h"
#include "transport/local_socket/Server.h"
#include "transport/local_socket/TransmitterId.h"

namespace local_socket {
namespace {

void Log(const std::wstring& message) {
    ControllerCSWrapper::WriteWarnLog(message);
}

/// Keeps the last log line of one transmitter. Threads: any.
class LastLine {
public:
    void Set(const std::wstring& message) {
        const std::lock_guard<std::mutex> guard(lock);
        line = message;
    }
    std::wstring Get() const {
        const std::lock_guard<std::mutex> guard(lock);
        return line;
    }

private:
    mutable std::mutex lock;
    std::wstring line;
};

/// A client waits for the handshake as long as for any response, and never less than `shortest`, so that an engine on a
/// busy machine can answer.
Limits ClientLimits() {
    constexpr std::chrono::milliseconds shortest{5000};
    Limits limits;
    limits.handshake = std::max<std::chrono::milliseconds>(response_timeout::FromEnvironment(), shortest);
    return limits;
}

/// Returns null and sets `problem` on failure.
std::unique_ptr<SocketTransmitter> MakeTransmitter(const TransmitterId& id, std::wstring& problem) {
    if (id.end == End::Client) {
        return std::make_unique<Client>(id.name, MakeLocalNetwork(Log), ClientLimits(), Log);
    }
    const auto last = std::make_shared<LastLine>();
    const Network::Log log = [last](const std::wstring& message) {
        last->Set(message);
        Log(message);
    };
    std::unique_ptr<SocketTransmitter> engine = Server::Listen(id.name, MakeLocalNetwork(log), Limits{}, log);
    problem = engine ? std::wstring() : last->Get();
    return engine;
}

/// Same as `MakeTransmitter`; also reports exceptions, for example a lack of threads or open files.
std::unique_ptr<SocketTransmitter> TryToMake(const TransmitterId& id, std::wstring& problem) {
    try {
        return MakeTransmitter(id, problem);
    } catch (const std::exception& failure) {
        problem = text::FromUtf8(failure.what());
        Log(L"No event line \"" + text::FromUtf8(id.name) + L"\": " + problem);
        return nullptr;
    }
}

/// All created transmitters, by id.
class Transmitters {
public:
    SocketTransmitter* Get(const std::wstring& text) {
        const std::optional<TransmitterId> id = ParseTransmitterId(text);
        if (!id) {
            Log(L"No event line \"" + text + L"\": use \"engine:NAME\" or \"client:NAME\", NAME being 1 to 64 of " +
                L"A-Z a-z 0-9 _ . -");
            return nullptr;
        }
        const std::lock_guard<std::mutex> guard(lock);
        std::unique_ptr<SocketTransmitter>& transmitter = transmitters[text];
        if (!transmitter) {
            transmitter = TryToMake(*id, problems[text]);
        }
        return transmitter.get();
    }

    /// Why the last attempt to make a transmitter failed.
    std::wstring ProblemOf(const std::wstring& text) {
        const std::lock_guard<std::mutex> guard(lock);
        const auto found = problems.find(text);
        return found == problems.end() ? std::wstring() : found->second;
    }

    void Stop() {
        const std::lock_guard<std::mutex> guard(lock);
        for (const auto& [id, transmitter] : transmitters) {
            if (transmitter) {
                // A handler that does not return is abandoned until the process ends.
                (void)transmitter->Stop(handlerTimeout);
            }
        }
    }

private:
    std::mutex lock;
    std::map<std::wstring, std::unique_ptr<SocketTransmitter>> transmitters;
    std::map<std::wstring, std::wstring> problems;
};

/// Never destroyed: other threads may send events until the process ends.
Transmitters& TheTransmitters() {
    static Transmitters& transmitters = []() -> Transmitters& {
        RegisterExitHandler([] { TheTransmitters().Stop(); });
        return platform::MakeNeverDestroyed<Transmitters>();
    }();
    return transmitters;
}

/// On failure, returns null; the log says why.
SocketTransmitter* Find(const std::wstring& transmitterId) {
    try {
        return TheTransmitters().Get(transmitterId);
    } catch (const std::exception& failure) {
        Log(L"No event line \"" + transmitterId + L"\": " + text::FromUtf8(failure.what()));
        return nullptr;
    }
}

} // namespace
} // namespace local_socket

extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    return local_socket::Find(transmitterId);
}

extern "C" CONTROLLER_API EventTransmitterExtension* GetEventTransmitterExtension(const std::wstring& transmitterId,
                                                                                  std::uint32_t version) {
    return version == EventTransmitterExtension::version ? local_socket::Find(transmitterId) : nullptr;
}

extern "C" CONTROLLER_API void DescribeEventTransmitter(const std::wstring& transmitterId, std::wstring& place,
                                                        std::wstring& problem) {
    const auto id = local_socket::ParseTransmitterId(transmitterId);
    place = id ? local_socket::LocalPlace(id->name) : std::wstring();
    problem = local_socket::TheTransmitters().ProblemOf(transmitterId);
}

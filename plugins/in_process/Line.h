#pragma once

#include "in_process/Endpoint.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace in_process {

/// Joins the ends of one line: one engine, any number of front ends. Ends are made when first asked for and stay. Any
/// thread; no handler runs under the lock.
class Line {
public:
    Line() = default;
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    /// Waits for the handlers that run, which may still send; what is queued is dropped. Nobody else uses the line or
    /// its ends any more.
    ~Line();

    /// Make the end where it is missing; std::system_error when the system has no thread left for it.
    EventTransmitter* Engine();
    EventTransmitter* FrontEndCalled(const std::wstring& name);

    /// The engine's number; 0 while nobody has asked for its end.
    EventTransmitter::Peer EngineNumber() const;

    /// False while there is no engine.
    [[nodiscard]] bool SendToEngine(EventTransmitter::Peer sender, const std::wstring& eventName,
                                    const std::wstring& payload);
    void SendToFrontEnds(EventTransmitter::Peer sender, const std::wstring& eventName, const std::wstring& payload);
    /// False when no front end has this number.
    [[nodiscard]] bool SendToFrontEnd(EventTransmitter::Peer sender, EventTransmitter::Peer receiver,
                                      const std::wstring& eventName, const std::wstring& payload);

private:
    mutable std::mutex mutex;
    std::unique_ptr<EngineEnd> engine;
    std::map<std::wstring, std::unique_ptr<FrontEnd>> frontEnds;
};

} // namespace in_process

#include "in_process/Line.h"

#include <algorithm>
#include <atomic>

namespace in_process {
namespace {

/// Counts through the whole process, so that no number comes twice.
EventTransmitter::Peer NextNumber() {
    static std::atomic<EventTransmitter::Peer> last = 0;
    return ++last;
}

} // namespace

Line::~Line() {
    // All ends are still whole: a handler that runs may send from any of them to any other.
    for (const auto& [name, frontEnd] : frontEnds) {
        frontEnd->EndDeliveries();
    }
    if (engine) {
        engine->EndDeliveries();
    }
}

EventTransmitter* Line::Engine() {
    const std::lock_guard lock(mutex);
    if (!engine) {
        engine = std::make_unique<EngineEnd>(*this, NextNumber());
    }
    return engine.get();
}

EventTransmitter* Line::FrontEndCalled(const std::wstring& name) {
    const std::lock_guard lock(mutex);
    const auto found = frontEnds.find(name);
    if (found != frontEnds.end()) {
        return found->second.get();
    }
    return frontEnds.emplace(name, std::make_unique<FrontEnd>(*this, NextNumber())).first->second.get();
}

EventTransmitter::Peer Line::EngineNumber() const {
    const std::lock_guard lock(mutex);
    return engine ? engine->Number() : 0;
}

bool Line::SendToEngine(EventTransmitter::Peer sender, const std::wstring& eventName, const std::wstring& payload) {
    const std::lock_guard lock(mutex);
    if (!engine) {
        return false;
    }
    engine->Receive(sender, eventName, payload);
    return true;
}

void Line::SendToFrontEnds(EventTransmitter::Peer sender, const std::wstring& eventName, const std::wstring& payload) {
    const std::lock_guard lock(mutex);
    for (const auto& [name, frontEnd] : frontEnds) {
        frontEnd->Receive(sender, eventName, payload);
    }
}

bool Line::SendToFrontEnd(EventTransmitter::Peer sender, EventTransmitter::Peer receiver, const std::wstring& eventName,
                          const std::wstring& payload) {
    const std::lock_guard lock(mutex);
    const auto found = std::find_if(frontEnds.begin(), frontEnds.end(),
                                    [receiver](const auto& entry) { return entry.second->Number() == receiver; });
    if (found == frontEnds.end()) {
        return false;
    }
    found->second->Receive(sender, eventName, payload);
    return true;
}

} // namespace in_process

#include "transport/in_process/Line.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace in_process {
namespace {

/// Counts through the whole process, so that no number comes twice.
Line::Peer NextNumber() {
    static std::atomic<Line::Peer> last = 0;
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

Endpoint* Line::Engine() {
    const std::lock_guard lock(mutex);
    if (!engine) {
        engine = std::make_unique<EngineEnd>(*this, NextNumber());
    }
    return engine.get();
}

Endpoint* Line::FrontEndCalled(const std::wstring& name) {
    const std::lock_guard lock(mutex);
    const auto found = frontEnds.find(name);
    if (found != frontEnds.end()) {
        return found->second.get();
    }
    return frontEnds.emplace(name, std::make_unique<FrontEnd>(*this, NextNumber())).first->second.get();
}

Line::Peer Line::EngineNumber() const {
    const std::lock_guard lock(mutex);
    return engine ? engine->Number() : 0;
}

bool Line::SendToEngine(Peer sender, const std::wstring& eventName, const std::wstring& payload, Endpoint::Give give) {
    const std::lock_guard lock(mutex);
    if (!engine) {
        return false;
    }
    engine->Receive(sender, eventName, payload, std::move(give));
    return true;
}

void Line::SendToFrontEnds(Peer sender, const std::wstring& eventName, const std::wstring& payload) {
    const std::lock_guard lock(mutex);
    for (const auto& [name, frontEnd] : frontEnds) {
        frontEnd->Receive(sender, eventName, payload, {});
    }
}

bool Line::SendToFrontEnd(Peer sender, Peer receiver, const std::wstring& eventName, const std::wstring& payload) {
    const std::lock_guard lock(mutex);
    const auto found = std::find_if(frontEnds.begin(), frontEnds.end(),
                                    [receiver](const auto& entry) { return entry.second->Number() == receiver; });
    if (found == frontEnds.end()) {
        return false;
    }
    found->second->Receive(sender, eventName, payload, {});
    return true;
}

} // namespace in_process

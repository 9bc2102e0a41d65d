/// An event transmitter with the two required operations. It connects an engine and front ends in one process: an event
/// is handled on the thread that sends it.

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/export.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace {

/// One end: the engine's or a front end's.
class End final : public EventTransmitter {
public:
    /// `lock` protects all ends, and is recursive because a handler may send and register.
    End(bool isEngine, std::recursive_mutex& lock, std::map<std::wstring, std::unique_ptr<End>>& allEnds)
        : isEngineEnd(isEngine), mutex(lock), ends(allEnds) {}

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) override {
        // While this waits for the lock, a delivery ends; after the return the earlier handler does not run again.
        const std::lock_guard guard(mutex);
        handlers[eventName] = handler;
    }

    /// From a front end to the engine, or from the engine to every front end.
    bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override {
        const std::lock_guard guard(mutex);
        bool isDelivered = isEngineEnd;
        for (const auto& [id, end] : ends) {
            if (end->isEngineEnd != isEngineEnd) {
                isDelivered = end->Deliver(eventName, payload) || isDelivered;
            }
        }
        return isDelivered;
    }

private:
    bool Deliver(const std::wstring& eventName, const std::wstring& payload) {
        const auto handler = handlers.find(eventName);
        return handler != handlers.end() && handler->second != nullptr && (*handler->second)(payload);
    }

    const bool isEngineEnd;
    std::recursive_mutex& mutex;
    std::map<std::wstring, std::unique_ptr<End>>& ends;
    std::map<std::wstring, CallbackFunctor*> handlers;
};

} // namespace

/// The id "engine" names the engine's end, any other id a front end. The module owns the ends until the process ends.
extern "C" CONTROLLER_PLUGIN_EXPORT EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    static std::recursive_mutex mutex;
    static std::map<std::wstring, std::unique_ptr<End>> ends;
    const std::lock_guard guard(mutex);
    std::unique_ptr<End>& end = ends[transmitterId];
    if (!end) {
        end = std::make_unique<End>(transmitterId == L"engine", mutex, ends);
    }
    return end.get();
}

#include "crash/Conversation.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "local_socket/support/Module.h"
#include "support/Deadline.h"
#include "support/TestProcess.h"
#include "text/Text.h"

#include <chrono>
#include <stdexcept>
#include <utility>

namespace crash {
namespace {

constexpr const wchar_t* changes = L"UpdateProgress";
constexpr const wchar_t* eventNames[] = {
    L"EnqueueJobsFinish", L"CancelJobsFinish",       L"InitJobsResponse", L"DeleteJobsResponse",
    L"TerminateResponse", L"CheckJobStatusResponse", L"RequestRefused",   changes};

} // namespace

class Conversation::Listener final : public CallbackFunctor {
public:
    Listener(Conversation& conversation, std::wstring eventName) : owner(conversation), name(std::move(eventName)) {}

    bool operator()(const std::wstring& content) override {
        owner.Keep({owner.extension->CurrentPeer(), name, content});
        return true;
    }

    const std::wstring& Name() const { return name; }

private:
    Conversation& owner;
    std::wstring name;
};

Conversation::Conversation(const std::wstring& endpointName, Told tell)
    : transmitter(TransmitterFromModule(L"client:" + endpointName)),
      extension(ExtensionFromModule(L"client:" + endpointName)), tellChanges(std::move(tell)) {
    for (const wchar_t* const name : eventNames) {
        listeners.push_back(std::make_unique<Listener>(*this, name));
        transmitter->AddEventHandler(name, listeners.back().get());
    }
}

Conversation::~Conversation() {
    for (const auto& listener : listeners) {
        transmitter->AddEventHandler(listener->Name(), nullptr);
    }
}

bool Conversation::Meet(void* process) {
    host = process;
    hostPeer = 0;
    const std::wstring greeting = L"meeting " + std::to_wstring(++meetings);
    Send(L"CheckJobStatusRequest", ControllerCSWrapper::Serialize(L"CheckJobStatusRequest", std::vector{greeting}));
    while (const auto event = Next()) {
        // Only the host that was asked says this back.
        if (event->name == L"CheckJobStatusResponse" && event->content.find(greeting) != std::wstring::npos) {
            hostPeer = event->peer;
            return true;
        }
    }
    return false;
}

void Conversation::Send(const std::wstring& request, const std::wstring& content) {
    // A host that dies lets go of its connections before its end can be seen.
    if (!extension->PostEvent(request, content) && !test_support::WaitUntilSignalled(host)) {
        throw std::runtime_error("a living host does not take " + text::ToUtf8(request));
    }
}

std::optional<std::wstring> Conversation::Ask(const std::wstring& request, const std::wstring& content,
                                              const std::wstring& answer) {
    Send(request, content);
    auto event = NextNamed(answer);
    return event ? std::optional(std::move(event->content)) : std::nullopt;
}

bool Conversation::AwaitChanges(const std::function<bool()>& isReached) {
    while (!isReached()) {
        if (!NextNamed(changes)) {
            return false;
        }
    }
    return true;
}

void Conversation::HearLastWords() {
    while (host != nullptr && NextNamed(changes)) {
    }
    host = nullptr;
}

void Conversation::Keep(Event event) {
    const std::lock_guard lock(mutex);
    events.push_back(std::move(event));
    arrived.Raise();
}

std::optional<Conversation::Event> Conversation::Next() {
    for (;;) {
        if (auto event = TakeKept()) {
            return event;
        }
        const auto signalled = platform::WaitForAny({arrived.Handle(), host}, test_support::patience);
        if (!signalled) {
            throw std::runtime_error("a living host says nothing");
        }
        // The end of a host may be known before its last words are here.
        constexpr std::chrono::milliseconds interval{1};
        while (*signalled == 1 && extension->IsConnected() && !platform::WaitForAny({arrived.Handle()}, interval)) {
        }
        if (*signalled == 1 && !platform::WaitForAny({arrived.Handle()}, std::chrono::milliseconds{0})) {
            return std::nullopt;
        }
    }
}

std::optional<Conversation::Event> Conversation::TakeKept() {
    const std::lock_guard lock(mutex);
    while (!events.empty()) {
        Event event = std::move(events.front());
        events.pop_front();
        if (hostPeer == 0 || event.peer == hostPeer) {
            return event;
        }
    }
    arrived.Clear();
    return std::nullopt;
}

std::optional<Conversation::Event> Conversation::NextNamed(const std::wstring& name) {
    while (auto event = Next()) {
        if (event->name == changes) {
            std::vector<JobStatusInfo> changed;
            if (!ControllerCSWrapper::Deserialize(event->content, changed)) {
                throw std::runtime_error("changes that cannot be read: " + text::ToUtf8(event->content));
            }
            tellChanges(changed);
        }
        if (event->name == name) {
            return event;
        }
        if (event->name == L"RequestRefused") {
            throw std::runtime_error(text::ToUtf8(event->content));
        }
    }
    return std::nullopt;
}

} // namespace crash

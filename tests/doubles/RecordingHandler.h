#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "support/Collected.h"

#include <functional>
#include <string>
#include <utility>

/// A handler of events that keeps what it was given, and does what the test wants.
class RecordingHandler final : public CallbackFunctor {
public:
    using Action = std::function<void(const std::wstring& payload)>;

    explicit RecordingHandler(Action what = [](const std::wstring&) {}) : action(std::move(what)) {}

    bool operator()(const std::wstring& payload) override {
        payloads.Add(payload);
        action(payload);
        handled.Add(payload);
        return true;
    }

    /// As they came, before the action.
    Collected<std::wstring> payloads;
    /// Those whose action is over.
    Collected<std::wstring> handled;

private:
    const Action action;
};

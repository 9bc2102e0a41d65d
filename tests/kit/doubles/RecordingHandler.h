#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "kit/Collected.h"

#include <functional>
#include <string>
#include <utility>

/// An event handler that records its payloads and calls an action of the test.
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

    /// In order of arrival, before the action.
    Collected<std::wstring> payloads;
    /// The payloads whose action has returned.
    Collected<std::wstring> handled;

private:
    const Action action;
};

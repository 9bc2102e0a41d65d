#pragma once

#include <string>

/// Handles one kind of event. Whoever made it owns it and deletes it through its own type: there is no virtual
/// destructor, because the call is the first and only virtual operation that modules rely on.
class CallbackFunctor {
public:
    /// Takes the payload of one delivery; false when it could not be used. Called on the transmitter's thread.
    virtual bool operator()(const std::wstring& payload) = 0;

protected:
    CallbackFunctor() = default;
    CallbackFunctor(const CallbackFunctor&) = default;
    CallbackFunctor& operator=(const CallbackFunctor&) = default;
    ~CallbackFunctor() = default;
};

#pragma once

#include <string>

/// Handles one kind of event. Its creator owns it and deletes it through the derived type. It has no virtual destructor
/// because modules rely on the call operator as the first and only virtual function.
class CallbackFunctor {
public:
    /// Handles the payload of one event. Returns false when the payload could not be used. Threads: called on the
    /// transmitter's thread.
    virtual bool operator()(const std::wstring& payload) = 0;

protected:
    CallbackFunctor() = default;
    /// Derived classes may be copied.
    CallbackFunctor(const CallbackFunctor&) = default;
    /// Derived classes may be assigned.
    CallbackFunctor& operator=(const CallbackFunctor&) = default;
    ~CallbackFunctor() = default;
};

#pragma once

#include <string>

/// During its lifetime this process and those it starts are an ordinary user for permissions and limits. No effect in a
/// process that is one already.
class OrdinaryUser {
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    /// Why programs of the build cannot be started as this user; empty if they can.
    static std::string Problem(const std::wstring& program);
};

#pragma once

#include <string>

/// While it lives, this process is an ordinary user for all that permissions and limits say, and so are those that it
/// starts. A process that is one already stays what it is.
class OrdinaryUser {
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    /// Why programs of the build cannot be started so; empty when they can.
    static std::string Problem(const std::wstring& program);
};

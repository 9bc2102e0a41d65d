#pragma once

#include <string>
#include <utility>
#include <vector>

// Records passed between a front end's dialogs and the host; the library neither creates nor reads them.

/// One service that a host offers.
struct ServiceInfo {
    /// Identifies the service.
    std::wstring id;
    /// The name shown to users.
    std::wstring displayName;

    /// Compares all members.
    bool operator==(const ServiceInfo&) const = default;
};

/// The user's settings as named values.
struct UserSettingsInfo {
    /// Names and values.
    std::vector<std::pair<std::wstring, std::wstring>> values;

    /// Compares all members.
    bool operator==(const UserSettingsInfo&) const = default;
};

/// Values of the user's settings to write.
struct WriteUserSettingsInfo {
    /// Names and values.
    std::vector<std::pair<std::wstring, std::wstring>> values;

    /// Compares all members.
    bool operator==(const WriteUserSettingsInfo&) const = default;
};

#pragma once

#include <string>
#include <utility>
#include <vector>

// Records passed between a front end's dialogs and the host; the library neither creates nor reads them.

/// One service that a host offers.
struct ServiceInfo {
    std::wstring id;
    std::wstring displayName;

    bool operator==(const ServiceInfo&) const = default;
};

/// The user's settings as named values.
struct UserSettingsInfo {
    std::vector<std::pair<std::wstring, std::wstring>> values;

    bool operator==(const UserSettingsInfo&) const = default;
};

/// Values of the user's settings to write.
struct WriteUserSettingsInfo {
    std::vector<std::pair<std::wstring, std::wstring>> values;

    bool operator==(const WriteUserSettingsInfo&) const = default;
};

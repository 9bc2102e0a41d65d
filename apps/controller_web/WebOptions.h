#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace web {

/// The parsed command line of `controller_web`.
struct WebOptions {
    enum class Mode { Foreground, Background, Stop, Help, Version, Wrong };
    Mode mode = Mode::Foreground;
    /// Nothing: the setting decides.
    std::optional<std::uint16_t> port = {};
    bool isReadOnly = false;
    bool opensBrowser = true;
    /// Passed by the program that starts this one in the background: an inherited event to raise when the server
    /// answers.
    std::wstring readyEvent = {};
    /// The help, or what is wrong.
    std::string message = {};
};

WebOptions ParseWebOptions(const std::vector<std::wstring>& arguments);

} // namespace web

#pragma once

#include "front_end/terminal/Console.h"

namespace web {

/// The console of functions that are shared with the command lines. Nobody reads it: what they report is returned.
class QuietConsole final : public front_end::Console {
public:
    void Write(std::wstring_view /*text*/) override {}
    void WriteBytes(std::string_view /*bytes*/) override {}
    void WriteError(std::wstring_view /*text*/) override {}
    void* ReaderGone() const override { return nullptr; }
    bool IsTerminal() const override { return false; }
    bool HasColours() const override { return false; }
    void UseColours(bool /*hasColours*/) override {}
    bool HasLinks() const override { return false; }
    std::optional<std::wstring> Ask(std::wstring_view /*question*/) override { return std::nullopt; }
    platform::Error ReadInput(std::size_t /*most*/, std::string& /*bytes*/) override {
        return {platform::ErrorKind::NotSupported};
    }
    std::size_t Width() const override { return 0; }
    std::size_t Height() const override { return 0; }
};

} // namespace web

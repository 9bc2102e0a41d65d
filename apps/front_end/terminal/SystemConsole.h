#pragma once

#include "front_end/terminal/Console.h"

namespace front_end {

/// The console of this process. Uses colours only on a terminal, and not if NO_COLOR is set.
class SystemConsole final : public Console {
public:
    void Write(std::wstring_view text) override;
    void WriteBytes(std::string_view bytes) override;
    void WriteError(std::wstring_view text) override;
    void* ReaderGone() const override;
    bool IsTerminal() const override;
    bool HasColours() const override;
    void UseColours(bool hasColours) override { chosenColours = hasColours; }
    bool HasLinks() const override;
    std::optional<std::wstring> Ask(std::wstring_view question) override;
    platform::Error ReadInput(std::size_t most, std::string& bytes) override;
    std::size_t Width() const override;
    std::size_t Height() const override;

private:
    std::optional<bool> chosenColours;
};

} // namespace front_end

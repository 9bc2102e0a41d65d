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
    std::size_t Width() const override;
    std::size_t Height() const override;
};

} // namespace front_end

#include "transport/in_process/TransmitterId.h"

namespace in_process {
namespace {

/// Cuts `text` at its first `separator` and gives what stands behind it; nothing, `text` as it was, without one.
std::optional<std::wstring> CutAt(wchar_t separator, std::wstring& text) {
    const auto at = text.find(separator);
    if (at == std::wstring::npos) {
        return std::nullopt;
    }
    std::wstring behind = text.substr(at + 1);
    text.resize(at);
    return behind;
}

} // namespace

std::optional<TransmitterId> ParseTransmitterId(const std::wstring& text) {
    std::wstring end = text;
    std::optional<std::wstring> line = CutAt(L':', end);
    if (!line) {
        line = text;
        end = L"client";
    }
    const bool isEngine = end == L"engine";
    const std::optional<std::wstring> frontEnd = CutAt(L'#', *line);
    if ((!isEngine && end != L"client") || (isEngine && frontEnd) || line->empty()) {
        return std::nullopt;
    }
    return TransmitterId{isEngine, *line, frontEnd.value_or(std::wstring())};
}

} // namespace in_process

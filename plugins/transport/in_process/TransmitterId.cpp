#include "transport/in_process/TransmitterId.h"

namespace in_process {
namespace {

/// Truncates `text` at its first `separator` and returns the part after it. Without a separator, returns nothing and
/// leaves `text` unchanged.
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
    std::optional<std::wstring> bus = CutAt(L':', end);
    if (!bus) {
        bus = text;
        end = L"client";
    }
    const bool isServer = end == L"engine";
    const std::optional<std::wstring> client = CutAt(L'#', *bus);
    if ((!isServer && end != L"client") || (isServer && client) || bus->empty()) {
        return std::nullopt;
    }
    return TransmitterId{isServer, *bus, client.value_or(std::wstring())};
}

} // namespace in_process

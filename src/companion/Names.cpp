#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <array>
#include <cstdint>
#include <random>

#include "formats/Boundary.h"
#include "platform/files/NativePath.h"
#include "text/Hexadecimal.h"

namespace {

constexpr std::size_t guidLength = 36;

bool IsHyphen(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

/// A version 4 UUID of RFC 4122: random except for the version digit and the two variant bits.
wchar_t GuidDigit(std::size_t position, std::random_device& random) {
    if (position == 14) {
        return L'4';
    }
    const std::uint32_t value = random() & 0xF;
    return text::hexadecimalDigits[position == 19 ? 8 + (value & 3) : value];
}

} // namespace

std::wstring ControllerCSWrapper::CreateGuid() {
    return boundary::Guard("CreateGuid", [] {
        std::random_device random;
        std::wstring guid(guidLength, L'-');
        for (std::size_t i = 0; i < guidLength; ++i) {
            if (!IsHyphen(i)) {
                guid[i] = GuidDigit(i, random);
            }
        }
        return guid;
    });
}

std::wstring ControllerCSWrapper::GetFileNameWithoutExtension(const std::wstring& path) {
    return boundary::Guard("GetFileNameWithoutExtension", [&] {
        const std::wstring name = platform::FileName(path);
        return name.substr(0, name.rfind(L'.'));
    });
}

#include "formats/zip/ZipName.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "formats/zip/ZipError.h"
#include "text/Text.h"

namespace zip {
namespace {

constexpr std::size_t longestName = 1024;
constexpr std::size_t longestPart = 255;
constexpr std::size_t deepestDirectory = 32;

wchar_t ToLower(wchar_t character) {
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

std::wstring Lowered(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), ToLower);
    return text;
}

bool IsControl(wchar_t character) {
    return character < 0x20 || (character >= 0x7f && character <= 0x9f);
}

/// "com1", "lpt9", and the same with a superscript digit, which Windows treats as a digit.
bool IsNumberedDevice(const std::wstring& stem) {
    const std::wstring digits = L"0123456789\u00b9\u00b2\u00b3";
    return stem.size() == 4 && (stem.starts_with(L"com") || stem.starts_with(L"lpt")) &&
           digits.find(stem[3]) != std::wstring::npos;
}

/// True for names that denote a device on Windows in any directory, with any extension.
bool IsDevice(const std::wstring& part) {
    constexpr std::array<const wchar_t*, 6> devices = {L"con", L"prn", L"aux", L"nul", L"conin$", L"conout$"};
    std::wstring stem = Lowered(part.substr(0, part.find(L'.')));
    stem.erase(stem.find_last_not_of(L' ') + 1);
    return IsNumberedDevice(stem) || std::find(devices.begin(), devices.end(), stem) != devices.end();
}

void CheckPart(const std::wstring& part) {
    if (part.empty()) {
        throw Problem{L"has a name with an empty part"};
    }
    if (part == L"." || part == L"..") {
        throw Problem{L"has a name with the part \"" + part + L"\""};
    }
    if (part.size() > longestPart) {
        throw Problem{L"has a name with a part of more than 255 characters"};
    }
    if (part.back() == L'.' || part.back() == L' ') {
        throw Problem{L"has a name with a part that ends in a dot or blank"};
    }
    if (IsDevice(part)) {
        throw Problem{L"has a name that means a device on Windows"};
    }
}

void CheckCharacters(const std::wstring& name) {
    if (std::any_of(name.begin(), name.end(), IsControl)) {
        throw Problem{L"has a name with a control character"};
    }
    if (name.find(L'\\') != std::wstring::npos) {
        throw Problem{L"has a name with a backslash"};
    }
    if (name.find(L':') != std::wstring::npos) {
        throw Problem{L"has a name with a colon (drive or stream)"};
    }
    if (name.find_first_of(L"<>\"|?*") != std::wstring::npos) {
        throw Problem{L"has a name with a character that Windows does not allow (<>\"|?*)"};
    }
}

void CheckParts(std::wstring_view path) {
    std::size_t depth = 0;
    while (true) {
        if (++depth > deepestDirectory) {
            throw Problem{L"lies more than 32 folders deep"};
        }
        const std::size_t end = path.find(L'/');
        CheckPart(std::wstring(path.substr(0, end)));
        if (end == std::wstring_view::npos) {
            return;
        }
        path.remove_prefix(end + 1);
    }
}

std::wstring WithoutSlashAtEnd(const std::wstring& name) {
    return name.ends_with(L'/') ? name.substr(0, name.size() - 1) : name;
}

} // namespace

std::wstring CheckedName(std::string_view bytes) {
    if (bytes.empty()) {
        throw Problem{L"has no name"};
    }
    if (bytes.size() > longestName) {
        throw Problem{L"has a name of more than 1024 bytes"};
    }
    const std::optional<std::wstring> name = text::FromStrictUtf8(bytes);
    if (!name) {
        throw Problem{L"has a name that is not UTF-8"};
    }
    if (name->starts_with(L'/')) {
        throw Problem{L"has an absolute name"};
    }
    CheckCharacters(*name);
    CheckParts(WithoutSlashAtEnd(*name));
    return *name;
}

bool IsSafeFileName(std::string_view bytes) {
    try {
        return CheckedName(bytes).find(L'/') == std::wstring::npos;
    } catch (const Problem&) {
        return false;
    }
}

void NameSet::Add(const std::wstring& name) {
    const std::wstring path = WithoutSlashAtEnd(name);
    AddParents(path);
    const bool isDirectory = name.ends_with(L'/');
    const auto [place, isNew] = names.try_emplace(Lowered(path), Known{path, isDirectory, true});
    if (isNew) {
        return;
    }
    Known& known = place->second;
    if (known.spelling != path) {
        throw Problem{L"differs from \"" + known.spelling + L"\" in case only"};
    }
    if (known.isDirectory != isDirectory) {
        throw Problem{L"is both a file and a folder"};
    }
    if (std::exchange(known.isEntry, true)) {
        throw Problem{L"appears twice"};
    }
}

void NameSet::AddParents(const std::wstring& path) {
    for (std::size_t end = path.find(L'/'); end != std::wstring::npos; end = path.find(L'/', end + 1)) {
        const std::wstring directory = path.substr(0, end);
        const Known& known = names.try_emplace(Lowered(directory), Known{directory, true, false}).first->second;
        if (known.spelling != directory) {
            throw Problem{L"lies in a folder that differs from \"" + known.spelling + L"\" in case only"};
        }
        if (!known.isDirectory) {
            throw Problem{L"lies below \"" + directory + L"\", which is a file"};
        }
    }
}

} // namespace zip

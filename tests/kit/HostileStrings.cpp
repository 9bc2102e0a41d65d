#include "kit/HostileStrings.h"

#include <initializer_list>

namespace {

std::wstring Elements(std::initializer_list<std::uint32_t> numbers) {
    std::wstring text;
    for (const std::uint32_t number : numbers) {
        text += static_cast<wchar_t>(number);
    }
    return text;
}

void AddSurrogates(std::vector<std::wstring>& texts) {
    for (const auto& text :
         {Elements({0xD800}), Elements({0xDBFF}), Elements({0xDC00}), Elements({0xDFFF}), Elements({0xDC80, 0xDCFF}),
          Elements({0xDC00, 0xD800}), Elements({0xD800, 0xD800}), Elements({'a', 0xD83D, 'b'}),
          Elements({0xD83D, 0xDE00}), Elements({0xD83D, 0xD83D, 0xDE00}), Elements({0xD83D, 0xDE00, 0xDE00}),
          Elements({'\\', 0xD800, '\\'}), Elements({0xD800, 'u', 'd', 'c', '0', '0'}), Elements({0xD800, 0, 0xDC00})}) {
        texts.push_back(text);
        texts.push_back(std::wstring(15, L'x') + text + std::wstring(17, L'y'));
    }
}

void AddWideElements(std::vector<std::wstring>& texts) {
    if constexpr (sizeof(wchar_t) == sizeof(std::uint32_t)) {
        texts.push_back(Elements({0x10FFFF}));
        texts.push_back(Elements({0x110000}));
        texts.push_back(Elements({0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
        texts.push_back(Elements({'"', 0xD83D, 0xDE00, 0}));
        texts.push_back(Elements({0xD83D, 0x1F600}));
    }
}

} // namespace

std::vector<std::wstring> HostileStrings() {
    std::vector<std::wstring> texts = {
        L"",
        L"plain",
        L" blanks at both ends ",
        L"\"",
        L"\\",
        L"C:\\new\\table \"x\"\\",
        L"/s/\u00e9t\u00e9.rb",
        L"\\u0041",
        L"\\ud800",
        L"\\\\ud83d\\ude00",
        L"{\"codePoints\":[65]}",
        L"\t\r\n\b\f\x7f",
        L"\u65e5\u672c\u8a9e \U0001F600 \U0010FFFF",
        L"\ufeff\ufffe\uffff\ufffd\u2028",
        std::wstring(1, L'\0'),
        std::wstring(L"a\0b\0", 4),
        std::wstring(1 << 16, L'x'),
        std::wstring(1 << 12, L'\\'),
        std::wstring(1 << 12, L'\u00e9'),
    };
    for (wchar_t control = 0; control < 0x20; ++control) {
        texts.push_back({L'<', control, L'>'});
    }
    AddSurrogates(texts);
    AddWideElements(texts);
    return texts;
}

wchar_t RandomTexts::Element() {
    switch (engine() % 8) {
    case 0:
        return static_cast<wchar_t>(0xD800 + engine() % 0x800);
    case 1:
        return static_cast<wchar_t>(engine() % 0x20);
    case 2:
        return L"\"\\/u{}[]"[engine() % 8];
    case 3:
        return static_cast<wchar_t>(engine());
    case 4:
        return static_cast<wchar_t>(engine() % 0x10000);
    default:
        return static_cast<wchar_t>(0x20 + engine() % 0x60);
    }
}

std::wstring RandomTexts::operator()() {
    std::wstring text(Count(40), L'\0');
    const bool isPlain = Count(2) == 0;
    for (auto& element : text) {
        element = isPlain ? static_cast<wchar_t>(L'a' + Count(25)) : Element();
    }
    return text;
}

std::vector<std::wstring> RandomTexts::List() {
    std::vector<std::wstring> list(Count(3));
    for (auto& text : list) {
        text = (*this)();
    }
    return list;
}

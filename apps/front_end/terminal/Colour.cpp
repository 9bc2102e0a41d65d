#include "front_end/terminal/Colour.h"

namespace front_end {
namespace {

const wchar_t* BeginningOf(Colour colour) {
    switch (colour) {
    case Colour::Red:
        return L"\x1b[31m";
    case Colour::Green:
        return L"\x1b[32m";
    case Colour::Yellow:
        return L"\x1b[33m";
    case Colour::Cyan:
        return L"\x1b[36m";
    case Colour::Bold:
        return L"\x1b[1m";
    case Colour::None:
        break;
    }
    return L"";
}

} // namespace

std::wstring Coloured(const std::wstring& text, Colour colour) {
    return colour == Colour::None ? text : BeginningOf(colour) + text + L"\x1b[0m";
}

} // namespace front_end

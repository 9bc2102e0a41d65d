#include "text/Utf8Pieces.h"

#include <algorithm>

#include "text/CodeUnits.h"
#include "text/Utf8.h"

namespace text {
namespace {

/// True if the bytes are the beginning of a character whose rest is missing.
bool IsIncomplete(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    return Utf8Length(first) > bytes.size() && std::all_of(bytes.begin() + 1, bytes.end(), IsUtf8Continuation);
}

char32_t CharacterOf(CodePoint taken) {
    return taken.length == 0 || IsSurrogate(taken.value) ? replacementCharacter : taken.value;
}

} // namespace

std::u32string Utf8Pieces::Take(std::string_view piece) {
    kept += piece;
    std::string_view rest = kept;
    std::u32string characters;
    while (!rest.empty() && !IsIncomplete(rest)) {
        const CodePoint taken = TakeUtf8<Surrogates::Allowed>(rest);
        characters += CharacterOf(taken);
        rest.remove_prefix(std::max<std::size_t>(taken.length, 1));
    }
    kept.erase(0, kept.size() - rest.size());
    return characters;
}

std::u32string Utf8Pieces::TakeRest() {
    std::u32string rest(kept.empty() ? 0 : 1, char32_t{replacementCharacter});
    kept.clear();
    return rest;
}

} // namespace text

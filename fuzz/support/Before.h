#pragma once

#include "kit/RecordMaker.h"

namespace fuzz {

/// Makes the content of an output before a reader fills it.
inline RecordMaker Before() {
    return {[] { return std::wstring(L"before"); }, [] { return 7; }};
}

} // namespace fuzz

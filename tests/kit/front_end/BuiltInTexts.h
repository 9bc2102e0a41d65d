#pragma once

#include "front_end/output/Texts.h"

/// The texts of a front end without a string resource file.
inline const front_end::Texts& BuiltInTexts() {
    static const front_end::Texts texts(L"");
    return texts;
}

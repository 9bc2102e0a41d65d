#pragma once

#include "kit/front_end/FrontEndFixture.h"

/// Fixture for the parts of commands, with the context that a command of `cadjobs` would pass.
class CommandContextFixture : public FrontEndFixture {
protected:
    CommandContextFixture() : texts(stringResourceFile) {}

    const front_end::Texts texts;
    front_end::CommandContext context{console,   texts, host, nullptr, timeout, [] { return std::int64_t{1772694600}; },
                                      L"cadjobs"};
};

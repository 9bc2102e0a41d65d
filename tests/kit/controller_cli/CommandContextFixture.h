#pragma once

#include "kit/controller_cli/FrontEndFixture.h"

/// Fixture for the parts of commands, with the context that a command would pass.
class CommandContextFixture : public FrontEndFixture {
protected:
    CommandContextFixture() : texts(stringResourceFile) {}

    const controller_cli::Texts texts;
    controller_cli::CommandContext context{console, texts,    host,
                                           nullptr, patience, [] { return std::int64_t{1772694600}; }};
};

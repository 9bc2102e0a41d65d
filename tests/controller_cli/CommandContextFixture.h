#pragma once

#include "FrontEndFixture.h"

/// What commands are made of, each part by itself: with the context that a command would hand it.
class CommandContextFixture : public FrontEndFixture {
protected:
    CommandContextFixture() : texts(stringResourceFile) {}

    const controller_cli::Texts texts;
    controller_cli::CommandContext context{console, texts,    host,
                                           nullptr, patience, [] { return std::int64_t{1772694600}; }};
};

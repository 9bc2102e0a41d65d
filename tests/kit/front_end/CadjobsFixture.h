#pragma once

#include "cadjobs/Cadjobs.h"
#include "kit/front_end/FrontEndFixture.h"

/// `cadjobs` with a scripted host.
class CadjobsFixture : public FrontEndFixture {
protected:
    int Run(const std::vector<std::wstring>& arguments) {
        return RunProgram(L"cadjobs", front_end::RunCadjobs, arguments);
    }
};

#pragma once

#include "controller_cli/ControllerCli.h"
#include "kit/front_end/FrontEndFixture.h"

/// `controller_cli` with a scripted host.
class ControllerCliFixture : public FrontEndFixture {
protected:
    int Run(const std::vector<std::wstring>& arguments) {
        return RunProgram(L"controller_cli", front_end::RunControllerCli, arguments);
    }
};

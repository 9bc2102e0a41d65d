/// A host that starts one scenario through a function module and waits until it is ended. Arguments: the module, the
/// settings file, a file with the run request, a file to create when the scenario was started.

#include "CommonControllerLib/FunctionManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "services/Settings.h"

int main(int count, char** values) {
    const std::vector<std::wstring> arguments = platform::ProgramArguments(count, values);
    settings::UseFile(arguments.at(1));
    const FunctionManager functions({arguments.at(0)});
    std::wstring request;
    std::wstring answer;
    if (!ControllerCSWrapper::ReadJsonFile(arguments.at(2), request) ||
        functions.CallFunction("RunScenario", request, answer, nullptr) != 0) {
        return 1;
    }
    if (!platform::CreateEmptyFile(arguments.at(3))) {
        return 1;
    }
    for (;;) {
        platform::WaitForAny({}, std::nullopt);
    }
}

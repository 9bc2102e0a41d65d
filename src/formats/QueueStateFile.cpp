#include "formats/QueueStateFile.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Boundary.h"
#include "formats/json/Reading.h"
#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "text/Text.h"

namespace queue_state_file {

std::wstring PathOf(const std::wstring& listPath) {
    return listPath + L".queue";
}

QueueState Read(const std::wstring& listPath) {
    return boundary::Guard("Read", [&] {
        const std::wstring path = PathOf(listPath);
        QueueState state;
        std::wstring problem;
        if (platform::Exists(path) && !json::ReadFile(path, json::largestSmallFile, state, problem)) {
            ControllerCSWrapper::WriteErrorLog(L"The queue is paused, because its state cannot be read: " + problem +
                                               L". Resume it, or remove the file while no host runs");
            state.isPaused = true;
        }
        return state;
    });
}

bool Write(const std::wstring& listPath, const QueueState& state, std::wstring& problem) {
    return boundary::Guard("Write", [&] {
        const std::wstring path = PathOf(listPath);
        if (const platform::Error result = platform::ReplaceFile(path, text::ToUtf8(json::Write(state))); !result) {
            problem =
                L"The state of the queue cannot be written: " + platform::ToNativeText(path) + L": " + result.Text();
            return false;
        }
        return true;
    });
}

} // namespace queue_state_file

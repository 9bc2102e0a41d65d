#include "slurm/SrunProcess.h"

#include "formats/LogTail.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "slurm/ClusterCommands.h"
#include "slurm/WaiterProgram.h"
#include "slurm/posix/BoundProgram.h"

namespace slurm {
namespace {

constexpr std::size_t mostOutput = 8192;

} // namespace

platform::Error SrunProcess::Start(const std::vector<std::wstring>& arguments) {
    const std::optional<std::wstring> program = platform::FindProgram(L"srun");
    if (!program) {
        return {platform::ErrorKind::NotFound, 0};
    }
    if (const platform::Error result = output.Open(); !result) {
        return result;
    }
    std::vector<std::wstring> words = {boundOption, std::to_wstring(platform::OwnProcessNumber()),
                                       platform::ToNativeText(*program)};
    words.insert(words.end(), arguments.begin(), arguments.end());
    platform::ProcessStart start = ClusterCommand(WaiterProgram(), std::move(words));
    start.searchPath = false;
    start.detached = true;
    start.output = output.WriteEnd();
    const platform::Error result = platform::StartProcess(start, process);
    output.CloseWriteEnd();
    isOutputOver = !result;
    return result;
}

void SrunProcess::CarryOutput() {
    constexpr std::size_t pieceSize = 65536;
    while (Readable() != nullptr && platform::WaitForAny({Readable()}, std::chrono::milliseconds(0))) {
        std::string piece;
        output.ReadAvailable(pieceSize, piece);
        isOutputOver = piece.empty();
        lastOutput += piece;
        if (lastOutput.size() > mostOutput) {
            lastOutput.erase(0, lastOutput.size() - mostOutput);
        }
    }
}

std::wstring SrunProcess::LastLines() const {
    return run_protocol::LastLines(lastOutput);
}

void SrunProcess::Terminate() {
    platform::RequestTermination(process.Get());
}

void SrunProcess::Kill() {
    KillProcess(process.Get());
}

} // namespace slurm

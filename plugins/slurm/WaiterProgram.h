#pragma once

#include <cstdint>
#include <string>

#include "formats/RunProtocol.h"

/// The program `slurm_waiter` and the options that select what it does.
namespace slurm {

/// Runs a job: `--work-dir DIR --name NAME [--host HANDLE] [--settings FILE]`.
inline constexpr auto nameOption = L"--name";
/// Runs a scenario on a node: `--node NAME --work-dir DIR --runner PROGRAM --settings FILE --lost-after SECONDS`.
inline constexpr auto nodeOption = L"--node";
/// Becomes a program that ends with its parent: `--bound-to PROCESS PROGRAM [ARGUMENT...]`.
inline constexpr auto boundOption = L"--bound-to";
/// Cancels the jobs of earlier hosts: `--end-lost PREFIX --keep HOST --host HANDLE`.
inline constexpr auto endLostOption = L"--end-lost";

inline constexpr auto workDirOption = L"--work-dir";
inline constexpr auto hostOption = L"--host";
inline constexpr auto settingsOption = L"--settings";
inline constexpr auto runnerOption = L"--runner";
inline constexpr auto lostAfterOption = L"--lost-after";
inline constexpr auto keepOption = L"--keep";

/// The program file, beside the plug-in or where it is installed.
std::wstring WaiterProgram();

/// Other values are exit codes of `scenario_runner`.
enum class WaiterExit : std::int32_t {
    /// There is a result.
    Done = 0,
    WrongArguments = 2,
    /// The job could not be started; the result says why.
    NotStarted = 3,
    /// The result could not be written.
    NoResult = 4,
    /// The host has ended, and the job with it.
    HostEnded = 5,
    /// Nothing is known of the end of the job; the result says so. For retries this is a crash.
    Lost = run_protocol::crashedExitCode,
    /// The node does not have the job's work directory; the result says so.
    NoWorkDirectory = 76,
    /// On a node: the attempt was given up, and none of its processes is left.
    GivenUp = 77
};

} // namespace slurm

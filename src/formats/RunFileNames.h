#pragma once

#include <cstdint>
#include <string>

/// Names of the files in a job's work directory, shared by engine, function modules, runner and front ends.
namespace run_protocol {

inline constexpr wchar_t runInfoFileName[] = L"run_scenario_info.json";
inline constexpr wchar_t progressFileName[] = L"progress_info_list.json";
inline constexpr wchar_t resultFileName[] = L"run_scenario_result.json";
inline constexpr wchar_t killFileName[] = L"killprocess";
inline constexpr wchar_t logFileName[] = L"scenario.log";
inline constexpr wchar_t settingsCopyName[] = L"run_settings.json";

/// The log of an attempt that was followed by another one. Attempts count from 1 on.
inline std::wstring AttemptLogName(std::int32_t attempt) {
    return L"scenario." + std::to_wstring(attempt) + L".log";
}

} // namespace run_protocol

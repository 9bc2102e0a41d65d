#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "formats/json/Layout.h"

/// What a job asks of a Slurm cluster: in the settings for all scenarios, in a manifest for one.
namespace slurm {

struct SlurmOptions {
    /// One partition or several, separated by commas; empty: the default of the cluster. The same holds for each other
    /// member.
    std::wstring partition;
    std::wstring account;
    std::int32_t cpus = 0;
    std::int64_t memoryMegabytes = 0;
    std::int32_t minutes = 0;
    /// Further options of `srun`, each "--name" or "--name=value".
    std::vector<std::wstring> options;

    bool operator==(const SlurmOptions&) const = default;
};

struct PartitionName {
    static constexpr auto expected = L"partitions of 1 to 256 letters, digits, dots, dashes, underscores and commas";
    static CONTROLLER_API bool Accepts(const std::wstring& name);
};

struct AccountName {
    static constexpr auto expected = L"a name of 1 to 64 letters, digits, dots, dashes and underscores";
    static CONTROLLER_API bool Accepts(const std::wstring& name);
};

struct CpuCount {
    static constexpr auto expected = L"a whole number of CPUs from 1 to 4096";
    static bool Accepts(std::int32_t cpus) { return cpus >= 1 && cpus <= 4096; }
};

struct MemorySize {
    static constexpr auto expected = L"a whole number of megabytes from 1 to 16777216";
    static bool Accepts(std::int64_t megabytes) { return megabytes >= 1 && megabytes <= 16777216; }
};

struct JobMinutes {
    static constexpr auto expected = L"a whole number of minutes from 1 to 525600";
    static bool Accepts(std::int32_t minutes) { return minutes >= 1 && minutes <= 525600; }
};

/// The accepted options of `srun`. They choose or describe resources: others could break the supervision of the job, or
/// start programs.
inline constexpr std::array<std::wstring_view, 28> srunOptions{L"begin",         L"cluster-constraint",
                                                               L"comment",       L"constraint",
                                                               L"contiguous",    L"cores-per-socket",
                                                               L"deadline",      L"exclude",
                                                               L"exclusive",     L"gpus",
                                                               L"gpus-per-node", L"gpus-per-task",
                                                               L"gres",          L"hint",
                                                               L"licenses",      L"mem-per-cpu",
                                                               L"mem-per-gpu",   L"nice",
                                                               L"nodelist",      L"oversubscribe",
                                                               L"prefer",        L"priority",
                                                               L"qos",           L"reservation",
                                                               L"switches",      L"threads-per-core",
                                                               L"tmp",           L"wckey"};

/// "--NAME or --NAME=VALUE, where NAME is one of: ...". An array that is too short does not compile.
inline constexpr auto expectedSrunOption = [] {
    std::array<wchar_t, 512> text{};
    constexpr std::wstring_view form = L"--NAME or --NAME=VALUE, where NAME is one of";
    auto* end = std::copy(form.begin(), form.end(), text.begin());
    for (const std::wstring_view option : srunOptions) {
        *end++ = option == srunOptions.front() ? L':' : L',';
        *end++ = L' ';
        end = std::copy(option.begin(), option.end(), end);
    }
    *end = L'\0';
    return text;
}();

struct SrunOption {
    static constexpr auto expected = expectedSrunOption.data();
    static CONTROLLER_API bool Accepts(const std::wstring& option);
};

/// The members of a file.
struct SlurmMembers {
    static constexpr auto members =
        std::make_tuple(json::Member{"partition", &SlurmOptions::partition, json::rule<PartitionName>},
                        json::Member{"account", &SlurmOptions::account, json::rule<AccountName>},
                        json::Member{"cpus", &SlurmOptions::cpus, json::rule<CpuCount>},
                        json::Member{"memoryMegabytes", &SlurmOptions::memoryMegabytes, json::rule<MemorySize>},
                        json::Member{"minutes", &SlurmOptions::minutes, json::rule<JobMinutes>},
                        json::Member{"options", &SlurmOptions::options, json::rule<SrunOption>});
};

/// Returns the first member, as "slurm.NAME", that conflicts with others, with what was expected; empty if there is
/// none. A scenario may run `timeLimitSeconds`; 0 means no limit.
CONTROLLER_API std::wstring FindContradiction(const SlurmOptions& options, std::int32_t timeLimitSeconds);

/// The members of `special`, and those of `general` that `special` does not have.
CONTROLLER_API SlurmOptions Merged(const SlurmOptions& general, const SlurmOptions& special);

} // namespace slurm

#include "controller_cli/command_line/MovedOptions.h"

#include <algorithm>

namespace front_end {

const std::vector<MovedOption>& MovedOptions() {
    static const std::vector<MovedOption> moved = {
        {L"--list", L"cadjobs list"},
        {L"--watch", L"cadjobs watch"},
        {L"--run", L"cadjobs run"},
        {L"--wait", L"cadjobs wait"},
        {L"--cancel", L"cadjobs cancel"},
        {L"--cancel-all", L"cadjobs cancel --all"},
        {L"--delete", L"cadjobs delete"},
        {L"--clean", L"cadjobs clean"},
        {L"--again", L"cadjobs again"},
        {L"--edit", L"cadjobs edit"},
        {L"--hold", L"cadjobs hold"},
        {L"--release", L"cadjobs release"},
        {L"--pause", L"cadjobs pause"},
        {L"--resume", L"cadjobs resume"},
        {L"--log", L"cadjobs log"},
        {L"--scenarios", L"cadjobs scenarios"},
        {L"--parameter-sets", L"cadjobs parameters"},
        {L"--stop-host", L"cadjobs host stop"},
        {L"--jobs", L"cadjobs list"},
        {L"--json", L"cadjobs list --json"},
        {L"--follow", L"cadjobs log --follow"},
        {L"--older-than", L"cadjobs clean --older-than"},
        {L"--state", L"cadjobs clean --state"},
        {L"--dry-run", L"cadjobs clean --dry-run"},
        {L"--output", L"cadjobs run --output"},
        {L"--argument", L"cadjobs run --argument"},
        {L"--priority", L"cadjobs run --priority"},
        {L"--not-before", L"cadjobs run --not-before"},
        {L"--need", L"cadjobs run --need"},
        {L"--after", L"cadjobs run --after"},
        {L"--after-end", L"cadjobs run --after-end"},
        {L"--skip-if-after-fails", L"cadjobs run --skip-if-after-fails"},
        {L"--on-hold", L"cadjobs run --on-hold"},
        {L"--reuse", L"cadjobs run --reuse"},
        {L"--no-reuse", L"cadjobs run --no-reuse"},
        {L"--retries", L"cadjobs run --retries"},
        {L"--retry-delay", L"cadjobs run --retry-delay"},
        {L"--retry-backoff", L"cadjobs run --retry-backoff"},
        {L"--retry-only-after-crash", L"cadjobs run --retry-only-after-crash"},
        {L"--time-limit", L"cadjobs run --time-limit"},
        {L"--silence-limit", L"cadjobs run --silence-limit"},
        {L"--memory-limit", L"cadjobs run --memory-limit"},
        {L"--cpu-limit", L"cadjobs run --cpu-limit"},
        {L"--client-only", L"controller_cli -f"},
        {L"--log-file", L"controller_cli -l"},
    };
    return moved;
}

std::optional<MovedOption> FindMovedOption(const std::vector<std::wstring>& options) {
    const auto isGiven = [&](const MovedOption& moved) {
        return std::any_of(options.begin(), options.end(), [&](const std::wstring& typed) {
            return typed.substr(0, typed.find(L'=')) == moved.option;
        });
    };
    const auto found = std::find_if(MovedOptions().begin(), MovedOptions().end(), isGiven);
    return found == MovedOptions().end() ? std::nullopt : std::optional(*found);
}

} // namespace front_end

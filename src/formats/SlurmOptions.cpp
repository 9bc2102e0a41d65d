#include "formats/SlurmOptions.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>

namespace slurm {
namespace {

constexpr auto nameCharacters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.";
constexpr std::size_t longestOption = 256;
constexpr std::size_t mostOptions = 32;
constexpr std::int32_t secondsPerMinute = 60;

bool IsName(const std::wstring& text, std::size_t longest, const std::wstring& characters) {
    return !text.empty() && text.size() <= longest && text.find_first_not_of(characters) == std::wstring::npos;
}

/// The name without the dashes in front.
std::wstring_view NameOf(std::wstring_view option) {
    return option.starts_with(L"--") ? option.substr(2, option.find(L'=') - 2) : std::wstring_view();
}

bool IsKnown(std::wstring_view name) {
    return std::find(srunOptions.begin(), srunOptions.end(), name) != srunOptions.end();
}

std::wstring WrongOption(const SlurmOptions& options, std::size_t index) {
    const std::wstring member = L"slurm.options[" + std::to_wstring(index) + L"]: ";
    const std::wstring_view name = NameOf(options.options[index]);
    const auto isSame = [&](const std::wstring& other) { return NameOf(other) == name; };
    const auto here = options.options.begin() + static_cast<std::ptrdiff_t>(index);
    if (std::any_of(options.options.begin(), here, isSame)) {
        return member + L"expected each option once, found \"--" + std::wstring(name) + L"\" again";
    }
    if (options.memoryMegabytes > 0 && name.starts_with(L"mem-per-")) {
        return member + L"expected no other amount of memory beside \"memoryMegabytes\", found \"--" +
               std::wstring(name) + L"\"";
    }
    return {};
}

} // namespace

bool PartitionName::Accepts(const std::wstring& name) {
    return IsName(name, 256, std::wstring(nameCharacters) + L',');
}

bool AccountName::Accepts(const std::wstring& name) {
    return IsName(name, 64, nameCharacters);
}

bool SrunOption::Accepts(const std::wstring& option) {
    const auto isPrintable = [](wchar_t character) { return character > 0x20 && character < 0x7f; };
    return option.size() <= longestOption && std::all_of(option.begin(), option.end(), isPrintable) &&
           IsKnown(NameOf(option));
}

std::wstring FindContradiction(const SlurmOptions& options, std::int32_t timeLimitSeconds) {
    if (options.options.size() > mostOptions) {
        return L"slurm.options: expected at most " + std::to_wstring(mostOptions) + L" elements";
    }
    if (options.minutes > 0 && timeLimitSeconds / secondsPerMinute >= options.minutes) {
        return L"slurm.minutes: expected more than \"timeLimitSeconds\", which is " +
               std::to_wstring(timeLimitSeconds) + L" s, found " + std::to_wstring(options.minutes);
    }
    for (std::size_t index = 0; index < options.options.size(); ++index) {
        if (std::wstring wrong = WrongOption(options, index); !wrong.empty()) {
            return wrong;
        }
    }
    return {};
}

SlurmOptions Merged(const SlurmOptions& general, const SlurmOptions& special) {
    const SlurmOptions none;
    SlurmOptions merged = special;
    const auto complete = [&](auto SlurmOptions::*member) {
        if (merged.*member == none.*member) {
            merged.*member = general.*member;
        }
    };
    complete(&SlurmOptions::partition);
    complete(&SlurmOptions::account);
    complete(&SlurmOptions::cpus);
    complete(&SlurmOptions::memoryMegabytes);
    complete(&SlurmOptions::minutes);
    complete(&SlurmOptions::options);
    return merged;
}

} // namespace slurm

#include "slurm/JobName.h"

#include <cstdint>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "text/Hexadecimal.h"

namespace slurm {
namespace {

constexpr auto beginning = L"controller-";
constexpr std::size_t longestName = 200;

/// The 64-bit FNV-1a hash.
std::uint64_t HashOf(const std::wstring& text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const wchar_t character : text) {
        hash = (hash ^ static_cast<std::uint64_t>(character)) * 0x100000001b3U;
    }
    return hash;
}

} // namespace

std::wstring NamePrefix(const std::wstring& machine, const std::wstring& jobListFile) {
    return beginning + text::HandleText(HashOf(machine + L'\n' + jobListFile)) + L"-";
}

std::wstring NewNamePart() {
    constexpr std::size_t length = 8;
    std::wstring part;
    for (const wchar_t character : ControllerCSWrapper::CreateGuid()) {
        if (text::hexadecimalDigits.find(character) != std::wstring_view::npos && part.size() < length) {
            part += character;
        }
    }
    return part;
}

std::wstring NewJobName(const std::wstring& prefix, const std::wstring& host, const std::wstring& jobId) {
    return prefix + host + L"-" + jobId + L"-" + NewNamePart();
}

bool IsOfEarlierHost(const std::wstring& name, const std::wstring& prefix, const std::wstring& host) {
    return IsJobName(name) && name.starts_with(prefix) && !name.starts_with(prefix + host + L"-");
}

bool IsJobName(const std::wstring& name) {
    return name.size() <= longestName && name.starts_with(beginning) &&
           name.find_first_not_of(L"abcdefghijklmnopqrstuvwxyz0123456789-") == std::wstring::npos;
}

} // namespace slurm

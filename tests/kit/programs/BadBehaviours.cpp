#include "kit/programs/BadBehaviours.h"

#include <cstdlib>
#include <string>
#include <string_view>

#include "formats/RunProtocol.h"
#include "kit/Require.h"
#include "platform/files/Directory.h"
#include "platform/files/File.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "platform/terminal/Console.h"
#include "text/Text.h"

namespace {

std::wstring InCurrentDirectory(const std::wstring& name) {
    return platform::ResolveAgainst(platform::CurrentDirectory(), name);
}

/// Replaces the report by half of one, repeatedly, until asked to stop.
void WriteHalfReports(const std::wstring& name) {
    const std::string whole = R"({"version":1,"progressInfoList":[{"progress":30,"message":"half)";
    for (std::size_t length = 0; !platform::Exists(InCurrentDirectory(run_protocol::killFileName)); ++length) {
        platform::File file;
        // A reader may hold it at the moment.
        (void)file.OpenForAppending(InCurrentDirectory(name), true);
        (void)file.Write(std::string_view(whole).substr(0, length % whole.size()));
    }
}

void MakeDirectory(const std::wstring& name) {
    test_support::Require(platform::EnsureDirectory(InCurrentDirectory(name)), "cannot make a folder");
}

void PrintMegabytes(const std::wstring& count) {
    std::string megabyte;
    while (megabyte.size() < std::size_t{1} << 20) {
        megabyte += "one of very many lines, each of them of sixty-four characters..\n";
    }
    for (int number = 0; number < std::stoi(count); ++number) {
        (void)platform::WriteOutput(megabyte);
    }
}

void ThrowWhatNobodyCatches(const std::wstring&) noexcept {
    std::stoi("no number");
}

[[noreturn]] void Abort(const std::wstring&) {
    std::abort();
}

} // namespace

Steps CommonBadBehaviours() {
    return {
        {L"write half reports ", WriteHalfReports},
        {L"make folder ", MakeDirectory},
        {L"print megabytes ", PrintMegabytes},
        {L"throw what nobody catches", ThrowWhatNobodyCatches},
        {L"abort", Abort},
    };
}

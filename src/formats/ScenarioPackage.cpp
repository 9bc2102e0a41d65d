#include "formats/ScenarioPackage.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <string_view>

#include "formats/zip/ZipArchive.h"
#include "formats/zip/ZipError.h"
#include "formats/zip/ZipWriter.h"
#include "platform/files/Directory.h"
#include "platform/files/File.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/files/ReplaceFile.h"
#include "text/Text.h"

namespace scenario_package {
namespace {

std::wstring PackageProblem(const std::wstring& packagePath, const zip::Problem& problem) {
    return L"The scenario package " + platform::ToNativeText(packagePath) + (problem.namesEntry ? L": " : L" ") +
           problem.text + L".";
}

/// Runs `action` on a package. On failure returns false and sets `problem`.
template <typename Action>
bool Attempt(const std::wstring& packagePath, std::wstring& problem, const Action& action) {
    try {
        action();
        return true;
    } catch (const zip::Problem& found) {
        problem = PackageProblem(packagePath, found);
    } catch (const std::bad_alloc&) {
        problem = PackageProblem(packagePath, {L"needs more memory than there is"});
    }
    return false;
}

std::string ReadNamedEntry(const zip::Archive& archive, const std::string& name, std::size_t limit) {
    const zip::Entry* const entry = archive.Find(name);
    if (entry == nullptr) {
        throw zip::Problem{L"has no file \"" + text::FromUtf8(name) + L"\""};
    }
    if (entry->facts.size > limit) {
        throw zip::EntryProblem(name, L"is larger than " + std::to_wstring(limit) + L" bytes");
    }
    std::string content;
    content.reserve(entry->facts.size);
    archive.Read(*entry, [&](std::string_view piece) { content += piece; });
    return content;
}

void RequireSuccess(const platform::Error& result, const std::wstring& what, const std::wstring& path) {
    if (!result) {
        throw zip::Problem{L"cannot be unpacked: " + what + L" " + platform::ToNativeText(path) + L": " +
                           result.Text()};
    }
}

void UnpackFile(const zip::Archive& archive, const zip::Entry& entry, const std::wstring& path) {
    platform::File file;
    RequireSuccess(file.CreateNew(path, {}), L"cannot create", path);
    archive.Read(entry, [&](std::string_view piece) { RequireSuccess(file.Write(piece), L"cannot write", path); });
    RequireSuccess(file.MakeExecutable(), L"cannot make executable", path);
}

void UnpackAll(const zip::Archive& archive, const std::wstring& directory) {
    for (const zip::Entry& entry : archive.Entries()) {
        std::wstring path = directory + L'\\' + entry.path;
        std::replace(path.begin() + static_cast<std::ptrdiff_t>(directory.size()), path.end(), L'/', L'\\');
        if (entry.IsDirectory()) {
            path.pop_back();
        }
        const std::wstring parent = entry.IsDirectory() ? path : platform::ParentDirectory(path);
        RequireSuccess(platform::EnsureDirectory(parent), L"cannot create", parent);
        if (!entry.IsDirectory()) {
            UnpackFile(archive, entry, path);
        }
    }
}

/// Removes a partially unpacked directory unless `Keep` was called.
class Beginning {
public:
    explicit Beginning(const std::wstring& begunDirectory) : directory(begunDirectory) {}
    ~Beginning() {
        if (!kept) {
            // The first failure is reported, not that of the removal.
            (void)platform::RemoveTree(directory);
        }
    }
    Beginning(const Beginning&) = delete;
    Beginning& operator=(const Beginning&) = delete;
    void Keep() { kept = true; }

private:
    const std::wstring& directory;
    bool kept = false;
};

void AddFile(const PackedFile& file, zip::Writer& writer) {
    std::string content;
    if (const platform::Error result = platform::ReadFile(file.path, zip::largestArchive, content); !result) {
        throw zip::Problem{L"cannot be made: cannot read " + platform::ToNativeText(file.path) + L": " + result.Text()};
    }
    try {
        writer.Add(file.name, content);
    } catch (const zip::Problem& problem) {
        throw zip::Problem{L"cannot be made: " + zip::EntryLabel(file.name) + problem.text};
    }
}

/// The limits of a package are those of its reader.
void RequireReadable(const std::string& bytes, const std::wstring& path) {
    if (const platform::Error result = platform::ReplaceFile(path, bytes); !result) {
        throw zip::Problem{L"cannot be written: " + result.Text()};
    }
    try {
        const zip::Archive archive(path);
    } catch (const zip::Problem&) {
        (void)platform::RemoveFile(path);
        throw;
    }
}

std::string PackedBytes(const std::vector<PackedFile>& files) {
    zip::Writer writer;
    for (const PackedFile& file : files) {
        AddFile(file, writer);
        if (writer.Size() > zip::largestArchive) {
            throw zip::Problem{L"would be larger than 512 MiB"};
        }
    }
    return writer.Finish();
}

} // namespace

Package::Package() = default;

Package::~Package() = default;

bool Package::Open(const std::wstring& packagePath, std::wstring& problem) {
    return Attempt(packagePath, problem, [&] {
        path = packagePath;
        archive = std::make_unique<zip::Archive>(packagePath);
    });
}

bool Package::HasFile(const std::string& name) const {
    return archive->Find(name) != nullptr;
}

bool Package::ReadEntry(const std::string& name, std::size_t limit, std::string& bytes, std::wstring& problem) const {
    return Attempt(path, problem, [&] { bytes = ReadNamedEntry(*archive, name, limit); });
}

bool Package::Unpack(const std::wstring& directory, std::wstring& problem) const {
    return Attempt(path, problem, [&] {
        RequireSuccess(platform::CreateNewDirectory(directory), L"cannot create", directory);
        Beginning beginning(directory);
        UnpackAll(*archive, directory);
        beginning.Keep();
    });
}

bool Unpack(const std::wstring& packagePath, const std::wstring& directory, std::wstring& problem) {
    Package package;
    return package.Open(packagePath, problem) && package.Unpack(directory, problem);
}

bool Pack(const std::vector<PackedFile>& files, const std::wstring& packagePath, std::wstring& problem) {
    return Attempt(packagePath, problem, [&] {
        const std::wstring beginning = packagePath + L".part";
        RequireReadable(PackedBytes(files), beginning);
        if (const platform::Error result = platform::RenameFile(beginning, packagePath); !result) {
            (void)platform::RemoveFile(beginning);
            throw zip::Problem{L"cannot be written: " + result.Text()};
        }
    });
}

} // namespace scenario_package

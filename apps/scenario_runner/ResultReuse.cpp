#include "scenario_runner/ResultReuse.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/Directory.h"
#include "platform/files/File.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/system/Sha256.h"
#include "scenario_runner/FileHashing.h"
#include "scenario_runner/OutputListing.h"
#include "text/Text.h"

namespace scenario_runner {
namespace {

using Names = std::vector<std::wstring>;

Names Sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
}

Names OutputNames(const provenance::Record& record) {
    Names names;
    for (const provenance::FileRecord& file : record.outputs) {
        names.push_back(file.path);
    }
    return Sorted(std::move(names));
}

std::wstring WhyListingDiffers(const std::wstring& directory, const provenance::Record& record) {
    OutputListing found;
    if (std::wstring problem = ListOutputs(directory, found); !problem.empty()) {
        return problem;
    }
    const bool isEqual =
        Sorted(found.files) == OutputNames(record) && Sorted(found.directories) == Sorted(record.outputDirectories);
    return isEqual ? L"" : L"Its output directory has other files than before.";
}

std::wstring WhyUsedFilesDiffer(const provenance::Record& record, const StopCheck& isStopped) {
    for (const provenance::FileRecord& used : record.usedFiles) {
        provenance::FileRecord now = used;
        if (std::wstring problem = HashFile(used.path, isStopped, now); !problem.empty()) {
            return problem;
        }
        if (now != used) {
            return platform::ToNativeText(used.path) + L" has changed.";
        }
    }
    return {};
}

bool AreAmongOutputs(const provenance::Record& record) {
    const Names names = OutputNames(record);
    return std::all_of(record.resultFiles.begin(), record.resultFiles.end(), [&](const std::wstring& file) {
        return std::binary_search(names.begin(), names.end(), file) ||
               std::count(record.outputDirectories.begin(), record.outputDirectories.end(), file) > 0;
    });
}

} // namespace

ResultReuse::ResultReuse(std::wstring newOutputDirectory, const provenance::Ingredients& usedIngredients,
                         StopCheck stopCheck)
    : outputDirectory(std::move(newOutputDirectory)), ingredients(usedIngredients), isStopped(std::move(stopCheck)) {}

std::optional<provenance::Record> ResultReuse::Take(const std::vector<provenance::Candidate>& candidates) {
    std::vector<platform::DirectoryEntry> entries;
    if (!platform::ListDirectory(outputDirectory, entries) || !entries.empty()) {
        return std::nullopt;
    }
    for (const provenance::Candidate& candidate : candidates) {
        provenance::Record record;
        const std::wstring problem = TakeFrom(candidate, record);
        if (problem.empty()) {
            return record;
        }
        ControllerCSWrapper::WriteInfoLog(L"The results of job " + std::to_wstring(candidate.jobNumber) +
                                          L" are not reused: " + problem);
        Undo();
    }
    return std::nullopt;
}

std::wstring ResultReuse::TakeFrom(const provenance::Candidate& candidate, provenance::Record& record) {
    std::wstring problem;
    if (!provenance::ReadRecord(platform::ResolveAgainst(candidate.outputDirectory, provenance::fileName), record,
                                problem)) {
        return problem;
    }
    problem = WhyNotUsable(candidate, record);
    return problem.empty() ? WhyNotCopied(candidate.outputDirectory, record) : problem;
}

std::wstring ResultReuse::WhyNotUsable(const provenance::Candidate& candidate, const provenance::Record& record) const {
    if (record.jobId != candidate.jobId || !record.succeeded) {
        return L"They are not those of a job that has succeeded.";
    }
    if (!record.notReusable.empty()) {
        return record.notReusable;
    }
    if (static_cast<const provenance::Ingredients&>(record) != ingredients) {
        return L"Scenario, argument, inputs or tools differ.";
    }
    if (!AreAmongOutputs(record)) {
        return L"The result names other files than the output files.";
    }
    std::wstring problem = WhyUsedFilesDiffer(record, isStopped);
    return problem.empty() ? WhyListingDiffers(candidate.outputDirectory, record) : problem;
}

/// The names are those of a listing, so none leads out of the directory.
std::wstring ResultReuse::WhyNotCopied(const std::wstring& from, const provenance::Record& record) {
    Names directories = Sorted(record.outputDirectories);
    for (const std::wstring& name : directories) {
        if (const platform::Error result = platform::EnsureDirectory(platform::ResolveAgainst(outputDirectory, name));
            !result) {
            return L"The directory " + name + L" cannot be created: " + result.Text() + L".";
        }
    }
    for (const provenance::FileRecord& file : record.outputs) {
        if (std::wstring problem = CopyOutput(from, file); !problem.empty()) {
            return problem;
        }
    }
    return {};
}

std::wstring ResultReuse::CopyOutput(const std::wstring& from, const provenance::FileRecord& file) {
    const std::wstring source = platform::ResolveAgainst(from, file.path);
    platform::File copy;
    platform::Error written = copy.CreateNew(platform::ResolveAgainst(outputDirectory, file.path), source);
    platform::Sha256 hash;
    const auto visit = [&](std::string_view block) {
        if (isStopped()) {
            throw Stopped();
        }
        hash.Add(block);
        written = copy.Write(block);
        return written ? platform::Reading::GoOn : platform::Reading::Stop;
    };
    const platform::Error read = written ? platform::ReadFileInBlocks(source, visit) : written;
    if (!read || !written) {
        return L"The output " + file.path + L" cannot be copied: " + (read ? written : read).Text() + L".";
    }
    return hash.Finish() == file.sha256 ? L"" : L"The output " + file.path + L" has changed.";
}

void ResultReuse::Undo() const {
    std::vector<platform::DirectoryEntry> entries;
    platform::Error result = platform::ListDirectory(outputDirectory, entries);
    for (const platform::DirectoryEntry& entry : entries) {
        const std::wstring path = platform::ResolveAgainst(outputDirectory, entry.name);
        const platform::Error removal =
            entry.isDirectory && !entry.isLink ? platform::RemoveTree(path) : platform::RemoveFile(path);
        result = result ? removal : result;
    }
    if (!result) {
        throw std::runtime_error(
            "The output directory " + text::ToUtf8(platform::ToNativeText(outputDirectory)) +
            " contains copies of earlier results that cannot be removed: " + text::ToUtf8(result.Text()));
    }
}

} // namespace scenario_runner

#include "controller_web/api/handlers/InputFiles.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "CommonControllerLib/JobEntry.h"
#include "controller_web/api/Answers.h"
#include "controller_web/api/files/FilesBelow.h"
#include "formats/json/Writing.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace web {
namespace {

struct InputEntry {
    std::wstring name;
    std::wstring path;
    std::wstring type;
    std::optional<std::int64_t> size;
    std::optional<std::wstring> modified;
};

struct InputsDocument {
    std::wstring path;
    std::optional<std::wstring> parent;
    std::vector<InputEntry> entries;
    bool isComplete = true;
};

struct UploadDocument {
    std::wstring path;
    std::int64_t size = 0;
};

} // namespace
} // namespace web

namespace json {

template <>
struct Layout<web::InputEntry> {
    using Record = web::InputEntry;
    static constexpr auto members =
        std::make_tuple(Member{"name", &Record::name}, Member{"path", &Record::path}, Member{"type", &Record::type},
                        OptionalMember{"size", &Record::size}, OptionalMember{"modified", &Record::modified});
};

template <>
struct Layout<web::InputsDocument> {
    using Record = web::InputsDocument;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"path", &Record::path}, OptionalMember{"parent", &Record::parent},
                        Member{"entries", &Record::entries}, Member{"complete", &Record::isComplete});
};

template <>
struct Layout<web::UploadDocument> {
    using Record = web::UploadDocument;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"path", &Record::path}, Member{"size", &Record::size});
};

} // namespace json

namespace web {
namespace {

/// A directory that is allowed, as the names that lead to it.
struct AllowedPlace {
    std::wstring root;
    std::vector<std::wstring> names;
};

std::vector<std::wstring> NamesIn(const std::wstring& path) {
    std::vector<std::wstring> names;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find(L'\\', begin), path.size());
        names.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

/// `path` is absolute and without "." and "..".
std::optional<AllowedPlace> PlaceBelow(const std::wstring& root, const std::wstring& path) {
    const std::wstring prefix = root.ends_with(L'\\') ? root : root + L"\\";
    if (platform::SameName(path, root)) {
        return AllowedPlace{root, {}};
    }
    if (path.size() <= prefix.size() || !platform::SameName(path.substr(0, prefix.size()), prefix)) {
        return std::nullopt;
    }
    return AllowedPlace{root, NamesIn(path.substr(prefix.size()))};
}

std::optional<AllowedPlace> PlaceOf(const std::vector<std::wstring>& allowed, const std::wstring& path) {
    for (const std::wstring& root : allowed) {
        if (auto place = PlaceBelow(platform::WithoutTrailingSeparators(root), path)) {
            return place;
        }
    }
    return std::nullopt;
}

InputsDocument Roots(const std::vector<std::wstring>& allowed) {
    InputsDocument document;
    for (const std::wstring& root : allowed) {
        const std::wstring native = platform::ToNativeText(root);
        document.entries.push_back({native, native, L"directory", std::nullopt, std::nullopt});
    }
    return document;
}

InputEntry EntryOf(const std::wstring& directory, const FoundEntry& found) {
    InputEntry entry{found.path, platform::ToNativeText(platform::ResolveAgainst(directory, found.path)),
                     found.isDirectory ? L"directory" : L"file", std::nullopt, std::nullopt};
    if (!found.isDirectory) {
        entry.size = static_cast<std::int64_t>(found.size);
        entry.modified = JobEntry::CreateTimeString(found.modified);
    }
    return entry;
}

InputsDocument Content(const AllowedPlace& place, const std::wstring& path) {
    platform::DirectoryHandle directory;
    Listing listing;
    platform::Error result = OpenDirectoryBelow(place.root, place.names, directory);
    if (result) {
        result = ListEntries(directory, listing);
    }
    if (!result) {
        throw NotFound(platform::ToNativeText(path) + L" cannot be listed: " + result.Text());
    }
    InputsDocument document{platform::ToNativeText(path), std::nullopt, {}, listing.isComplete};
    if (!place.names.empty()) {
        document.parent = platform::ToNativeText(platform::ParentDirectory(path));
    }
    for (const FoundEntry& found : listing.entries) {
        document.entries.push_back(EntryOf(path, found));
    }
    return document;
}

} // namespace

Response GetInputs(const std::vector<std::wstring>& allowed, const Call& call) {
    const std::wstring typed = QueryValue(call.request, "path");
    if (typed.empty()) {
        return JsonResponse(json::Write(Roots(allowed)));
    }
    const bool isPath = platform::IsAbsolute(typed) && !platform::NamesNothing(typed);
    const std::wstring path = isPath ? platform::ResolveAgainst(L"\\", typed) : std::wstring();
    const auto place = isPath ? PlaceOf(allowed, path) : std::nullopt;
    if (!place) {
        throw ApiError{403, "forbidden",
                       L"The directory is not below one of those that the setting web.inputDirectories names."};
    }
    return JsonResponse(json::Write(Content(*place, path)));
}

Response PostUpload(Services& services, const Call& call) {
    const std::string name = text::ToUtf8(QueryValue(call.request, "name"));
    ReceivedFile& file = *call.request.file;
    const std::wstring path = services.uploads.Store(name, file);
    return JsonResponse(
        json::Write(UploadDocument{platform::ToNativeText(path), static_cast<std::int64_t>(file.Size())}), 201);
}

} // namespace web

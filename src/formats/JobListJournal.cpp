#include "formats/JobListJournal.h"

#include <optional>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <zlib.h>

#include "fault_points/FaultPoint.h"
#include "formats/json/Reading.h"
#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "text/Hexadecimal.h"
#include "text/StrictUtf8.h"
#include "text/Text.h"

namespace job_list_journal {
namespace {

struct Header {
    std::wstring snapshot;
};

/// One change of the list. A changed row replaces the row with the same id, or is appended.
struct Change {
    std::vector<ListedJob> changed;
    std::vector<std::wstring> deleted;
};

} // namespace
} // namespace job_list_journal

namespace json {

template <>
struct Layout<job_list_journal::Header> {
    static constexpr auto members =
        std::make_tuple(Version(), Member{"snapshot", &job_list_journal::Header::snapshot, Presence::Required});
};

template <>
struct Layout<job_list_journal::Change> {
    static constexpr auto members = std::make_tuple(Member{"changed", &job_list_journal::Change::changed},
                                                    Member{"deleted", &job_list_journal::Change::deleted});
};

} // namespace json

namespace job_list_journal {
namespace {

constexpr std::size_t digitCount = 8;

/// Returns the checksum of a line as it is written in front of it.
std::string ChecksumOf(std::string_view json) {
    const uLong checksum = crc32_z(crc32_z(0, nullptr, 0), reinterpret_cast<const Bytef*>(json.data()), json.size());
    const std::string digits = text::ToUtf8(text::HexadecimalText(checksum));
    return std::string(digitCount - digits.size(), '0') + digits;
}

std::string LineOf(const std::wstring& json) {
    std::string bytes;
    std::size_t badAt = 0;
    // Serialized JSON contains only valid characters.
    (void)text::EncodeUtf8(json, bytes, badAt);
    return ChecksumOf(bytes) + ' ' + bytes + '\n';
}

/// Produces the JSON of a `Change` without copying its rows.
std::wstring ChangeText(const Rows& changed, const std::vector<std::wstring>& deleted) {
    std::wstring json = LR"({"changed":[)";
    for (const job_list_file::Row& row : changed) {
        json += json.back() == L'[' ? L"" : L",";
        job_list_file::Append(row, json);
    }
    json += LR"(],"deleted":)";
    json::Append(deleted, json);
    json += L'}';
    return json;
}

/// Returns the JSON of a line without its line feed; nothing if the checksum does not match.
std::optional<std::string_view> JsonOf(std::string_view line) {
    if (line.size() <= digitCount || line[digitCount] != ' ') {
        return std::nullopt;
    }
    const std::string_view json = line.substr(digitCount + 1);
    return line.substr(0, digitCount) == ChecksumOf(json) ? std::optional(json) : std::nullopt;
}

/// The rows of a list, found by id. Of several rows with the same id, the first one is found.
class RowTable {
public:
    explicit RowTable(std::vector<ListedJob>& listed) : rows(listed) {}

    void Apply(Change change) {
        IndexListed();
        for (ListedJob& row : change.changed) {
            const auto [position, isNew] = positions.try_emplace(row.id, rows.size());
            if (isNew) {
                rows.push_back(std::move(row));
            } else {
                rows[position->second] = std::move(row);
            }
        }
        for (const std::wstring& id : change.deleted) {
            if (const auto row = positions.extract(id)) {
                deleted.insert(row.mapped());
            }
        }
    }

    /// Closes the gaps of deleted rows.
    void Finish() {
        std::size_t position = 0;
        std::erase_if(rows, [&](const ListedJob&) { return deleted.contains(position++); });
    }

private:
    /// Done with the first change: most journals have none.
    void IndexListed() {
        if (std::exchange(isIndexed, true)) {
            return;
        }
        for (std::size_t position = 0; position < rows.size(); ++position) {
            positions.emplace(rows[position].id, position);
        }
    }

    std::vector<ListedJob>& rows;
    std::unordered_map<std::wstring, std::size_t> positions;
    bool isIndexed = false;
    std::unordered_set<std::size_t> deleted;
};

/// Reads the lines of a journal one after another.
class Lines {
public:
    explicit Lines(std::string_view content) : rest(content) {}

    /// Returns false at the end, and before a last line without a line feed.
    [[nodiscard]] bool Next(std::string_view& line) {
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos) {
            return false;
        }
        line = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        ++number;
        return true;
    }

    bool IsLast() const { return rest.find('\n') == std::string_view::npos; }
    std::size_t Number() const { return number; }

private:
    std::string_view rest;
    std::size_t number = 0;
};

template <typename Value>
bool ReadLine(std::string_view line, Value& value) {
    const std::optional<std::string_view> json = JsonOf(line);
    std::wstring problem;
    return json && json::Read(std::string(*json), value, problem);
}

} // namespace

std::wstring PathOf(const std::wstring& listPath) {
    return listPath + L".journal";
}

Found Apply(const std::wstring& path, const std::wstring& snapshotId, std::vector<ListedJob>& rows,
            std::wstring& problem) {
    std::string content;
    if (const platform::Error result = platform::ReadFileRetrying(path, json::largestText, content); !result) {
        problem = platform::ToNativeText(path) + L": " + result.Text();
        return result.kind == platform::ErrorKind::NotFound ? Found::Nothing : Found::Damaged;
    }
    Lines lines(content);
    std::string_view line;
    Header header;
    if (!lines.Next(line) || !ReadLine(line, header) || header.snapshot != snapshotId) {
        return Found::Nothing;
    }
    RowTable table(rows);
    while (lines.Next(line)) {
        Change change;
        if (ReadLine(line, change)) {
            table.Apply(std::move(change));
        } else if (!lines.IsLast()) {
            problem = platform::ToNativeText(path) + L", line " + std::to_wstring(lines.Number()) + L": damaged";
            return Found::Damaged;
        }
    }
    table.Finish();
    return Found::Changes;
}

platform::Error Journal::Begin(const std::wstring& journalPath, const std::wstring& snapshotId) {
    path = journalPath;
    file = platform::File();
    const std::string header = LineOf(json::Write(Header{snapshotId}));
    if (const platform::Error result = platform::ReplaceFile(path, header); !result) {
        return result;
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::JournalBegun);
    size = header.size();
    isFlushed = true;
    return file.OpenForAppending(path, false, platform::AppendTo::RegularFile);
}

platform::Error Journal::Append(const Rows& changed, const std::vector<std::wstring>& deleted) {
    const auto stamp = platform::StampOf(path);
    if (!stamp || stamp->size != size) {
        return {platform::ErrorKind::NotFound};
    }
    const std::string line = LineOf(ChangeText(changed, deleted));
    isFlushed = false;
    size += line.size();
    const platform::Error result = file.Write(line);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::ChangeAppended);
    return result;
}

platform::Error Journal::Flush() {
    if (isFlushed) {
        return {};
    }
    const platform::Error result = file.Flush();
    fault_points::ReachFaultPoint(fault_points::FaultPoint::JournalFlushed);
    isFlushed = static_cast<bool>(result);
    return result;
}

void Journal::End(const std::wstring& journalPath) {
    file.Close();
    // A journal that stays is stale with the next snapshot.
    (void)platform::RemoveFile(journalPath);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::JournalEnded);
}

} // namespace job_list_journal

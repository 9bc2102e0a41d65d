#include "controller_web/api/files/FileContent.h"

#include <algorithm>
#include <utility>

#include "controller_web/api/Answers.h"
#include "controller_web/http/ByteRange.h"

namespace web {
namespace {

class FileReader final : public ContentReader {
public:
    FileReader(platform::File openFile, std::uint64_t first, std::uint64_t length)
        : file(std::move(openFile)), position(first), size(length), left(length) {}

    std::optional<std::uint64_t> Size() const override { return size; }

    /// A file that has become shorter cannot be sent as announced.
    std::optional<std::size_t> Read(std::span<char> block) override {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), left));
        std::size_t count = 0;
        if (wanted > 0 && (!file.ReadAt(position, block.data(), wanted, count) || count == 0)) {
            return std::nullopt;
        }
        position += count;
        left -= count;
        return count;
    }

private:
    platform::File file;
    std::uint64_t position;
    const std::uint64_t size;
    std::uint64_t left;
};

} // namespace

Response FileResponse(const Request& request, platform::File file, std::string_view mediaType) {
    const std::uint64_t size = file.Size();
    const ByteRange range = ReadByteRange(request.range, size);
    if (range.kind == ByteRange::Kind::Unsatisfiable) {
        throw ApiError{416, "range_not_satisfiable",
                       L"The file has " + std::to_wstring(size) + L" bytes, none of them in this range."};
    }
    const bool isPart = range.kind == ByteRange::Kind::Part;
    Response response;
    response.status = isPart ? 206 : 200;
    response.headers = {{"Content-Type", std::string(mediaType)}, {"Accept-Ranges", "bytes"}};
    if (isPart) {
        response.headers.emplace_back("Content-Range", range.Header(size));
    }
    response.body =
        std::make_unique<FileReader>(std::move(file), isPart ? range.first : 0, isPart ? range.length : size);
    return response;
}

} // namespace web

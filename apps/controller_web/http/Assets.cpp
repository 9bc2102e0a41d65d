#include "controller_web/http/Assets.h"

#include "controller_web/http/HeaderValues.h"
#include "controller_web/http/MediaType.h"

namespace web {
namespace {

Response::Text TextOf(std::string_view bytes) {
    return bytes.empty() ? nullptr : std::make_shared<const std::string>(bytes);
}

/// The names of files in "assets" depend on their contents.
std::string CachingOf(const std::string& path) {
    return path.starts_with("assets/") ? "private, max-age=31536000, immutable" : "no-cache";
}

std::string Quoted(std::string_view version, std::string_view form) {
    return '"' + std::string(version) + std::string(form) + '"';
}

} // namespace

Assets::Assets(std::span<const Asset> files) {
    for (const Asset& file : files) {
        entries[std::string(file.path)] = {{TextOf(file.bytes), Quoted(file.version, "")},
                                           {TextOf(file.gzip), Quoted(file.version, "-gzip")}};
    }
}

std::optional<Response> Assets::Answer(const std::string& path, const RequestHead& head) const {
    const std::string name = path.empty() ? "index.html" : path;
    const auto found = entries.find(name);
    if (found == entries.end()) {
        return std::nullopt;
    }
    const bool isCompressed = found->second.gzip.text && AcceptsGzip(head.acceptEncoding);
    const Form& form = isCompressed ? found->second.gzip : found->second.plain;
    Response response;
    response.headers = {{"ETag", form.tag}, {"Cache-Control", CachingOf(name)}, {"Vary", "Accept-Encoding"}};
    if (MatchesEntityTag(head.ifNoneMatch, form.tag)) {
        response.status = 304;
        return response;
    }
    response.headers.emplace_back("Content-Type", MediaTypeOf(name));
    if (isCompressed) {
        response.headers.emplace_back("Content-Encoding", "gzip");
    }
    response.body = form.text;
    return response;
}

} // namespace web

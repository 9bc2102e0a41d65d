#pragma once

#include "controller_web/http/RequestHead.h"
#include "controller_web/http/Response.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace web {

/// A file of the page, embedded into the program.
struct Asset {
    /// "index.html", "assets/index-1a2b.js".
    std::string_view path;
    std::string_view bytes;
    /// The same, compressed; empty: not worth it.
    std::string_view gzip;
    /// Differs if `bytes` differ.
    std::string_view version;
};

/// The files of the page. They are immutable; threads: any.
class Assets {
public:
    explicit Assets(std::span<const Asset> files);

    /// The answer to a GET for the file at this path ("" is "index.html"); nothing if there is none.
    [[nodiscard]] std::optional<Response> Answer(const std::string& path, const RequestHead& head) const;

private:
    struct Form {
        Response::Text text;
        std::string tag;
    };
    struct Entry {
        Form plain;
        /// Its text is null if there is none.
        Form gzip;
    };

    std::map<std::string, Entry> entries;
};

/// The files of the page that are part of this program.
std::span<const Asset> BuiltInAssets();

} // namespace web

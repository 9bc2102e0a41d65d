#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace web {

/// What a header "Range" asks for of a content.
struct ByteRange {
    enum class Kind {
        /// The whole content, for an answer 200: no range, several, or another unit than bytes.
        Whole,
        /// `length` bytes from `first`, for an answer 206.
        Part,
        /// Nothing of the content, for an answer 416.
        Unsatisfiable
    };
    Kind kind = Kind::Whole;
    std::uint64_t first = 0;
    std::uint64_t length = 0;

    /// The value of the header "Content-Range" for a content of `size` bytes: "bytes 0-99/1000" or "bytes */1000".
    std::string Header(std::uint64_t size) const;
};

/// Reads "bytes=0-99", "bytes=100-" and "bytes=-100" for a content of `size` bytes. Threads: any.
ByteRange ReadByteRange(std::string_view header, std::uint64_t size);

} // namespace web

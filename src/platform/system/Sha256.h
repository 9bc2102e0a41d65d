#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// Computes the SHA-256 hash of a stream of bytes with the instructions of the processor for it, if there are any. Not
/// thread-safe.
class Sha256 {
public:
    /// Throws `std::runtime_error` if the system provides no hashing.
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void Add(std::string_view bytes);

    /// Returns the hash of all added bytes as 64 lower-case hexadecimal digits. No other call may follow.
    [[nodiscard]] std::wstring Finish();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace platform

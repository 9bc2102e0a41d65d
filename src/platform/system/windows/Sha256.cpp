#include "platform/system/Sha256.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

#include <windows.h>

#include <bcrypt.h>

#include "text/Hexadecimal.h"

namespace platform {
namespace {

constexpr std::size_t digestSize = 32;
constexpr std::size_t largestPart = std::size_t{1} << 30;

void Require(NTSTATUS status) {
    if (status < 0) {
        throw std::runtime_error("The system cannot compute SHA-256 hashes.");
    }
}

} // namespace

struct Sha256::State {
    State() {
        Require(BCryptOpenAlgorithmProvider(&provider, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
        if (BCryptCreateHash(provider, &hash, nullptr, 0, nullptr, 0, 0) < 0) {
            BCryptCloseAlgorithmProvider(provider, 0);
            Require(-1);
        }
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        BCryptDestroyHash(hash);
        BCryptCloseAlgorithmProvider(provider, 0);
    }

    BCRYPT_ALG_HANDLE provider = nullptr;
    BCRYPT_HASH_HANDLE hash = nullptr;
};

Sha256::Sha256() : state(std::make_unique<State>()) {}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, largestPart);
        // The interface takes pointers to bytes that it does not change as pointers to changeable ones.
        auto* const data = const_cast<char*>(part.data());
        Require(BCryptHashData(state->hash, reinterpret_cast<PUCHAR>(data), static_cast<ULONG>(part.size()), 0));
        bytes.remove_prefix(part.size());
    }
}

std::wstring Sha256::Finish() {
    std::array<std::uint8_t, digestSize> hash = {};
    Require(BCryptFinishHash(state->hash, hash.data(), static_cast<ULONG>(hash.size()), 0));
    return text::HexadecimalText(hash);
}

} // namespace platform

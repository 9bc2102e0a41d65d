#include "platform/system/Sha256.h"

#include <array>
#include <cstdint>

#include <nettle/sha2.h>

#include "text/Hexadecimal.h"

namespace platform {

struct Sha256::State {
    sha256_ctx context;
};

Sha256::Sha256() : state(std::make_unique<State>()) {
    sha256_init(&state->context);
}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view bytes) {
    sha256_update(&state->context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::wstring Sha256::Finish() {
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> hash = {};
    sha256_digest(&state->context, hash.size(), hash.data());
    return text::HexadecimalText(hash);
}

} // namespace platform

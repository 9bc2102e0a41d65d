#include "platform/system/LoopbackPeer.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>

#include <unistd.h>

#include "platform/processes/posix/ProcessFiles.h"
#include "platform/system/posix/ConnectionTable.h"

namespace platform {
namespace {

/// 127.0.0.1 as the kernel writes it, also where it is a part of an IPv6 address.
constexpr std::string_view loopback = "0100007F";
/// The columns before the user: number, both addresses, state, queues, timer, retransmissions.
constexpr std::size_t columnOfUser = 7;
constexpr std::string_view established = "01";
/// Relays of the system, such as that of WSL, connect as root.
constexpr uid_t root = 0;

std::string_view TakeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    const std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

/// True for "0100007F:1F90", and for "0000000000000000FFFF00000100007F:1F90".
bool IsLoopback(std::string_view address, std::uint16_t port) {
    const std::size_t colon = address.rfind(':');
    if (colon == std::string_view::npos || !address.substr(0, colon).ends_with(loopback)) {
        return false;
    }
    const std::string_view digits = address.substr(colon + 1);
    unsigned number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return error == std::errc() && number == port;
}

std::optional<ConnectionEnd> EndInLine(std::string_view line, std::uint16_t from, std::uint16_t to) {
    (void)TakeWord(line);
    if (!IsLoopback(TakeWord(line), from) || !IsLoopback(TakeWord(line), to)) {
        return std::nullopt;
    }
    const bool isOpen = TakeWord(line) == established;
    for (std::size_t column = 4; column < columnOfUser; ++column) {
        (void)TakeWord(line);
    }
    const std::string_view digits = TakeWord(line);
    uid_t user = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), user);
    return error == std::errc() && !digits.empty() ? std::optional(ConnectionEnd{user, isOpen}) : std::nullopt;
}

} // namespace

std::optional<ConnectionEnd> FindConnectionEnd(std::string_view table, std::uint16_t from, std::uint16_t to) {
    while (!table.empty()) {
        const std::string_view line = table.substr(0, table.find('\n'));
        if (const auto end = EndInLine(line, from, to)) {
            return end;
        }
        table.remove_prefix(std::min(line.size() + 1, table.size()));
    }
    return std::nullopt;
}

/// The kernel lists both ends of a connection of this machine, each with the user of its program.
PeerUser UserOfLoopbackPeer(std::uint16_t ownPort, std::uint16_t peerPort) {
    for (const char* const name : {"net/tcp", "net/tcp6"}) {
        const auto table = ReadProcessFile(getpid(), name);
        if (const auto end = FindConnectionEnd(table.value_or(""), peerPort, ownPort)) {
            const bool isOwn = end->user == geteuid() || end->user == root;
            return end->isOpen && isOwn ? PeerUser::Own : PeerUser::Other;
        }
    }
    return PeerUser::Unknown;
}

} // namespace platform

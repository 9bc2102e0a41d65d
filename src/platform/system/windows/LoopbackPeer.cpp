#include "platform/system/LoopbackPeer.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <winsock2.h>

#include <windows.h>

#include <iphlpapi.h>

#include "platform/system/OwnedHandle.h"
#include "platform/system/windows/UserSid.h"

namespace platform {
namespace {

/// The table of all connections; empty if the system does not give it. It may grow between two calls.
std::vector<std::byte> ConnectionTable() {
    std::vector<std::byte> table;
    DWORD size = 0;
    DWORD result = ERROR_INSUFFICIENT_BUFFER;
    for (int attempt = 0; attempt < 5 && result == ERROR_INSUFFICIENT_BUFFER; ++attempt) {
        table.resize(size);
        result = GetExtendedTcpTable(table.empty() ? nullptr : table.data(), &size, FALSE, AF_INET,
                                     TCP_TABLE_OWNER_PID_CONNECTIONS, 0);
    }
    return result == NO_ERROR ? table : std::vector<std::byte>();
}

bool IsConnection(const MIB_TCPROW_OWNER_PID& row, std::uint16_t from, std::uint16_t to) {
    const DWORD loopback = htonl(INADDR_LOOPBACK);
    return row.dwLocalAddr == loopback && row.dwRemoteAddr == loopback && row.dwLocalPort == htons(from) &&
           row.dwRemotePort == htons(to);
}

/// The process of the connection; 0 if it is not listed.
DWORD ProcessOf(std::uint16_t from, std::uint16_t to) {
    const std::vector<std::byte> bytes = ConnectionTable();
    if (bytes.size() < sizeof(MIB_TCPTABLE_OWNER_PID)) {
        return 0;
    }
    const auto* const table = reinterpret_cast<const MIB_TCPTABLE_OWNER_PID*>(bytes.data());
    const auto* const end = table->table + table->dwNumEntries;
    const auto* const row = std::find_if(
        table->table, end, [from, to](const MIB_TCPROW_OWNER_PID& listed) { return IsConnection(listed, from, to); });
    return row == end ? 0 : row->dwOwningPid;
}

} // namespace

/// The processes of other users cannot be opened by one without their rights.
PeerUser UserOfLoopbackPeer(std::uint16_t ownPort, std::uint16_t peerPort) {
    const DWORD number = ProcessOf(peerPort, ownPort);
    if (number == 0) {
        return PeerUser::Unknown;
    }
    const OwnedHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, number));
    const std::wstring own = UserSidOf(GetCurrentProcess());
    return process && !own.empty() && UserSidOf(process.Get()) == own ? PeerUser::Own : PeerUser::Other;
}

} // namespace platform

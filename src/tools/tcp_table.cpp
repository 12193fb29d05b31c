#include "tools/tcp_table.h"

#include "tools/netlink_dump.h"

#include <linux/inet_diag.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <string_view>

namespace tolvo::tools {

namespace {

/// Longest row: protocol, two queues of ten digits, two dashes, and the state.
constexpr std::size_t longestRow = 5 + 2 * 11 + 4 + 16;

/// Number 12 is a connection request that is not accepted yet.
constexpr std::array<std::string_view, 13> stateNames{
    "CLOSED", "ESTABLISHED", "SYN_SENT", "SYN_RCVD", "FIN_WAIT_1", "FIN_WAIT_2", "TIME_WAIT",
    "CLOSED", "CLOSE_WAIT",  "LAST_ACK", "LISTEN",   "CLOSING",    "SYN_RCVD"};

constexpr std::uint32_t namedStates = (1U << stateNames.size()) - 1;

char* write(char* out, std::string_view text) {
    return std::ranges::copy(text, out).out;
}

char* writeNumber(char* out, std::uint32_t number) {
    return std::to_chars(out, out + 10, number).ptr;
}

} // namespace

std::string_view tcpStateName(unsigned state) {
    return state < stateNames.size() ? stateNames[state] : "UNKNOWN";
}

void appendTCPRow(const NetlinkMessage& message, std::string& rows) {
    const auto socket = valueAt<inet_diag_msg>(message.payload);
    if (message.type != TCPDIAG_GETSOCK || !socket)
        return;
    std::array<char, longestRow> row;
    char* out = write(row.data(), socket->idiag_family == AF_INET6 ? "tcp6 " : "tcp4 ");
    out = writeNumber(out, socket->idiag_rqueue);
    *out++ = ' ';
    out = writeNumber(out, socket->idiag_wqueue);
    out = write(out, " - - ");
    out = write(out, tcpStateName(socket->idiag_state));
    *out++ = '\n';
    rows.append(row.data(), out);
}

std::expected<std::string, int> readTCPRows() {
    // The older of the two request types: it walks the kernel's table once for both families, the newer once for each.
    inet_diag_req request{};
    // Not those that are only bound: newer kernels walk a table of their own for these, which costs as much again.
    request.idiag_states = namedStates;
    // Some 40,000 sockets. Only what is written to costs memory, and growing would touch it all again.
    std::string rows;
    rows.reserve(1 << 20);
    const auto outcome = dumpOnce(NETLINK_SOCK_DIAG, TCPDIAG_GETSOCK, std::as_bytes(std::span(&request, 1)),
                                  [&](const NetlinkMessage& message) { appendTCPRow(message, rows); });
    if (!outcome)
        return std::unexpected(outcome.error());
    return rows;
}

} // namespace tolvo::tools

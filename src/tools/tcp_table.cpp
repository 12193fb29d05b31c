#include "tools/tcp_table.h"

#include "tools/ip_address.h"
#include "tools/netlink_dump.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <sys/socket.h>

#include <array>
#include <charconv>
#include <string_view>

namespace tolvo::tools {

namespace {

/// Longest row: protocol, two queues of ten digits, two addresses with port, and the state.
constexpr std::size_t longestRow = 16 + 2 * 11 + 2 * (longestAddressText + 7) + 16;

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

/// "address.port", with a star for any address and for no port. The words are in network order.
char* writeEndpoint(char* out, std::uint8_t family, const __be32* words, __be16 port) {
    std::array<std::uint8_t, 16> bytes{};
    std::memcpy(bytes.data(), words, family == AF_INET6 ? 16 : 4);
    if (bytes == std::array<std::uint8_t, 16>{})
        *out++ = '*';
    else
        out = family == AF_INET6 ? writeIPv6(out, bytes.data()) : writeIPv4(out, bytes.data());
    *out++ = '.';
    if (port == 0)
        return write(out, "*");
    return writeNumber(out, ntohs(port));
}

char* writeEndpoints(char* out, const inet_diag_msg& socket) {
    out = writeEndpoint(out, socket.idiag_family, socket.id.idiag_src, socket.id.idiag_sport);
    *out++ = ' ';
    return writeEndpoint(out, socket.idiag_family, socket.id.idiag_dst, socket.id.idiag_dport);
}

} // namespace

std::string_view tcpStateName(unsigned state) {
    return state < stateNames.size() ? stateNames[state] : "UNKNOWN";
}

void appendTCPRow(const NetlinkMessage& message, TCPRowForm form, std::string& rows) {
    const auto socket = valueAt<inet_diag_msg>(message.payload);
    if (message.type != TCPDIAG_GETSOCK || !socket)
        return;
    std::array<char, longestRow> row;
    char* out = write(row.data(), socket->idiag_family == AF_INET6 ? "tcp6 " : "tcp4 ");
    out = writeNumber(out, socket->idiag_rqueue);
    *out++ = ' ';
    out = writeNumber(out, socket->idiag_wqueue);
    *out++ = ' ';
    out = form == TCPRowForm::Full ? writeEndpoints(out, *socket) : write(out, "- -");
    *out++ = ' ';
    out = write(out, tcpStateName(socket->idiag_state));
    *out++ = '\n';
    rows.append(row.data(), out);
}

std::expected<std::string, int> readTCPRows(TCPRowForm form) {
    // The older of the two request types: it walks the kernel's table once for both families, the newer once for each.
    inet_diag_req request{};
    // Not those that are only bound: newer kernels walk a table of their own for these, which costs as much again.
    request.idiag_states = namedStates;
    // As much as the longest pipe holds. Only what is written to costs memory, and growing would touch it all again.
    std::string rows;
    rows.reserve(1 << 20);
    const auto outcome = dumpOnce(NETLINK_SOCK_DIAG, TCPDIAG_GETSOCK, std::as_bytes(std::span(&request, 1)),
                                  [&](const NetlinkMessage& message) { appendTCPRow(message, form, rows); });
    if (!outcome)
        return std::unexpected(outcome.error());
    return rows;
}

} // namespace tolvo::tools

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <resolv.h>

namespace tolvo::tools {

using DNSMessage = std::vector<std::uint8_t>;

/// A query for the IPv4 address of exactly this name; nothing when it is no legal name. There is no EDNS in it: the
/// answer is short, and the forwarders of old home routers choke on it.
std::optional<DNSMessage> makeAddressQuery(res_state resolver, const std::string& domain);

enum class ReplyVerdict {
    /// Garbage, or the answer to somebody else's or an earlier question.
    Foreign,
    /// Cut short; the whole answer is to be had over TCP.
    Truncated,
    Answer
};

/// Whether these bytes answer the query: its identifier and its question, and every record whole.
ReplyVerdict judgeReply(std::span<const std::uint8_t> query, std::span<const std::uint8_t> reply);

/// The header, the question and the records of an answer, one line each. Printable ASCII only, whatever the server
/// sent.
std::string describeReply(std::span<const std::uint8_t> reply);

} // namespace tolvo::tools

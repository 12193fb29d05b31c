#include "fuzz/require.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/dig_query_time_parser.h"
#include "tools/dns_message.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace {

using namespace tolvo;
using fuzzing::require;

/// A query for the address of example.com.
constexpr std::array<std::uint8_t, 29> query{0x12, 0x34, 1,   0,   0,   1, 0,   0,   0,   0, 0, 0, 7, 'e', 'x',
                                             'a',  'm',  'p', 'l', 'e', 3, 'c', 'o', 'm', 0, 0, 1, 0, 1};

void requireText(const std::string& text) {
    require(std::ranges::all_of(text, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
}

} // namespace

/// Any bytes as a name server's answer, also behind the right identifier and question.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvo::tools;
    static const Re2RegularExpressionCompiler compiler;
    static const DigQueryTimeParser parser(compiler);
    const std::span reply(data, size);
    const ReplyVerdict verdict = judgeReply(query, reply);
    const std::string text = describeReply(reply);
    requireText(text);
    require(verdict != ReplyVerdict::Answer || text.starts_with(";; Got answer:\n"));
    // A server can't say a time of its own: what it sends stands on lines of their own before it.
    require(parser.queryTime(text + ";; Query time: 5 msec\n") == 5.0);
    DNSMessage dressed(query.begin(), query.end());
    dressed[2] = 0x81;
    dressed.insert(dressed.end(), reply.begin(), reply.end());
    requireText(describeReply(dressed));
    judgeReply(query, dressed);
    return 0;
}

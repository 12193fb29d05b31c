#include "tools/dns_message.h"

#include "tools/ip_address.h"
#include "tools/text_output.h"

#include <arpa/nameser.h>
#include <strings.h>
#include <sys/socket.h>

#include <array>
#include <string_view>

namespace tolvo::tools {

namespace {

struct Question {
    std::array<char, NS_MAXDNAME> name{};
    unsigned type = 0;
    unsigned recordClass = 0;
};

std::optional<Question> questionOf(std::span<const std::uint8_t> message) {
    Question question;
    const std::uint8_t* const end = message.data() + message.size();
    const std::uint8_t* const begin = message.data() + NS_HFIXEDSZ;
    const int length = ::dn_expand(message.data(), end, begin, question.name.data(), question.name.size());
    if (length < 0 || end - begin < length + NS_QFIXEDSZ)
        return std::nullopt;
    question.type = ::ns_get16(begin + length);
    question.recordClass = ::ns_get16(begin + length + 2);
    return question;
}

bool isSameQuestion(std::span<const std::uint8_t> query, std::span<const std::uint8_t> reply) {
    const auto asked = questionOf(query);
    const auto answered = questionOf(reply);
    return asked && answered && asked->type == answered->type && asked->recordClass == answered->recordClass &&
           ::strcasecmp(asked->name.data(), answered->name.data()) == 0;
}

constexpr std::uint8_t responseBit = 0x80;
constexpr std::uint8_t opcodeBits = 0x78;
constexpr std::uint8_t truncatedBit = 0x02;
constexpr std::uint8_t responseCodeBits = 0x0F;

std::string_view statusName(int code) {
    static constexpr std::array<std::string_view, 11> names{"NOERROR", "FORMERR", "SERVFAIL", "NXDOMAIN",
                                                            "NOTIMP",  "REFUSED", "YXDOMAIN", "YXRRSET",
                                                            "NXRRSET", "NOTAUTH", "NOTZONE"};
    const auto index = static_cast<std::size_t>(code);
    return index < names.size() ? names[index] : "RESERVED";
}

void appendFlags(std::string& out, ns_msg& message) {
    struct Flag {
        ns_flag flag;
        std::string_view name;
    };
    static constexpr std::array<Flag, 7> flags{{{ns_f_qr, " qr"},
                                                {ns_f_aa, " aa"},
                                                {ns_f_tc, " tc"},
                                                {ns_f_rd, " rd"},
                                                {ns_f_ra, " ra"},
                                                {ns_f_ad, " ad"},
                                                {ns_f_cd, " cd"}}};
    out += ";; flags:";
    for (const Flag& flag : flags) {
        if (::ns_msg_getflag(message, flag.flag) != 0)
            out += flag.name;
    }
}

void appendHeader(std::string& out, ns_msg& message) {
    out += ";; Got answer:\n;; ->>HEADER<<- opcode: QUERY, status: ";
    out += statusName(::ns_msg_getflag(message, ns_f_rcode));
    out += ", id: ";
    appendNumber(out, ns_msg_id(message));
    out += '\n';
    appendFlags(out, message);
    static constexpr std::array<std::string_view, 4> counts{
        "; QUERY: ", ", ANSWER: ", ", AUTHORITY: ", ", ADDITIONAL: "};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        out += counts[i];
        appendNumber(out, ns_msg_count(message, static_cast<ns_sect>(i)));
    }
    out += '\n';
}

/// The data of the types that an address query brings; of any other type its length, in the notation for unknown types.
std::string recordData(const ns_msg& message, const ns_rr& record) {
    const std::span<const std::uint8_t> data(ns_rr_rdata(record), ns_rr_rdlen(record));
    const auto address = IPAddress::from(ns_rr_type(record) == ns_t_aaaa ? AF_INET6 : AF_INET, std::as_bytes(data));
    if (ns_rr_type(record) == ns_t_a && address)
        return "A " + address->text();
    if (ns_rr_type(record) == ns_t_aaaa && address)
        return "AAAA " + address->text();
    std::array<char, NS_MAXDNAME> name{};
    if (ns_rr_type(record) == ns_t_cname &&
        ::dn_expand(ns_msg_base(message), ns_msg_end(message), data.data(), name.data(), name.size()) >= 0)
        return "CNAME " + std::string(name.data()) + '.';
    return "TYPE" + std::to_string(ns_rr_type(record)) + " \\# " + std::to_string(data.size());
}

std::string recordText(const ns_msg& message, const ns_rr& record, ns_sect section) {
    const std::string name = std::string(ns_rr_name(record)) + ". ";
    if (section == ns_s_qd)
        return ';' + name + "IN A";
    return name + std::to_string(ns_rr_ttl(record)) + " IN " + recordData(message, record);
}

void appendSection(std::string& out, ns_msg& message, ns_sect section, std::string_view title) {
    const int count = ns_msg_count(message, section);
    if (count > 0)
        out.append("\n;; ").append(title).append(" SECTION:\n");
    for (int i = 0; i < count; ++i) {
        ns_rr record{};
        if (::ns_parserr(&message, section, i, &record) < 0)
            return;
        out += printable(recordText(message, record, section)) + '\n';
    }
}

} // namespace

std::optional<DNSMessage> makeAddressQuery(res_state resolver, const std::string& domain) {
    DNSMessage query(NS_PACKETSZ);
    const int size = ::res_nmkquery(resolver, ns_o_query, domain.c_str(), ns_c_in, ns_t_a, nullptr, 0, nullptr,
                                    query.data(), static_cast<int>(query.size()));
    if (size < 0)
        return std::nullopt;
    query.resize(static_cast<std::size_t>(size));
    return query;
}

ReplyVerdict judgeReply(std::span<const std::uint8_t> query, std::span<const std::uint8_t> reply) {
    if (reply.size() < NS_HFIXEDSZ || reply[0] != query[0] || reply[1] != query[1] || (reply[2] & responseBit) == 0 ||
        (reply[2] & opcodeBits) != 0)
        return ReplyVerdict::Foreign;
    // A server that refuses or doesn't understand may leave the question out.
    const unsigned questionCount = ::ns_get16(reply.data() + 4);
    const bool isBareFailure = questionCount == 0 && (reply[3] & responseCodeBits) != ns_r_noerror;
    if (!isBareFailure && (questionCount != 1 || !isSameQuestion(query, reply)))
        return ReplyVerdict::Foreign;
    if ((reply[2] & truncatedBit) != 0)
        return ReplyVerdict::Truncated;
    ns_msg message{};
    return ::ns_initparse(reply.data(), static_cast<int>(reply.size()), &message) == 0 ? ReplyVerdict::Answer
                                                                                       : ReplyVerdict::Foreign;
}

std::string describeReply(std::span<const std::uint8_t> reply) {
    std::string out;
    ns_msg message{};
    if (::ns_initparse(reply.data(), static_cast<int>(reply.size()), &message) != 0)
        return out;
    appendHeader(out, message);
    appendSection(out, message, ns_s_qd, "QUESTION");
    appendSection(out, message, ns_s_an, "ANSWER");
    appendSection(out, message, ns_s_ns, "AUTHORITY");
    appendSection(out, message, ns_s_ar, "ADDITIONAL");
    return out;
}

} // namespace tolvo::tools

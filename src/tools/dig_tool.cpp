#include "tools/tool.h"

#include "tools/dns_exchange.h"
#include "tools/dns_message.h"
#include "tools/text_output.h"

#include <resolv.h>

#include <cerrno>
#include <cstring>
#include <optional>

namespace tolvo::tools {

namespace {

// dig's own exit statuses.
constexpr int exitNoServerReached = 9;
constexpr int exitInternalError = 10;

struct DigRequest {
    std::chrono::seconds timeout{5};
    std::int64_t tries = 3;
    std::string domain;
};

/// The number behind "+name="; nothing when the argument is another.
std::optional<std::int64_t> optionValue(std::string_view argument, std::string_view name, std::int64_t most) {
    if (!argument.starts_with(name))
        return std::nullopt;
    return parseNumber(argument.substr(name.size()), 1, most);
}

std::optional<DigRequest> parseRequest(ToolArguments arguments) {
    DigRequest request;
    for (const std::string_view argument : arguments) {
        if (const auto seconds = optionValue(argument, "+time=", 3600))
            request.timeout = std::chrono::seconds(*seconds);
        else if (const auto tries = optionValue(argument, "+tries=", 100))
            request.tries = *tries;
        else if (argument.empty() || std::string_view("+-@").contains(argument[0]) || !request.domain.empty())
            return std::nullopt;
        else
            request.domain = argument;
    }
    if (request.domain.empty())
        return std::nullopt;
    return request;
}

/// What libresolv read from /etc/resolv.conf and its environment variables.
class Resolver {
public:
    Resolver() : isReady_(::res_ninit(&state_) == 0) {}
    Resolver(const Resolver&) = delete;
    Resolver& operator=(const Resolver&) = delete;
    ~Resolver() {
        if (isReady_)
            ::res_nclose(&state_);
    }

    bool isReady() const { return isReady_; }
    res_state state() { return &state_; }
    Transport transport() const { return (state_.options & RES_USEVC) != 0 ? Transport::TCP : Transport::UDP; }

private:
    struct __res_state state_{};
    bool isReady_;
};

std::string endpointText(const NameServer& server) {
    std::string text = printable(server.text()) + '#';
    appendNumber(text, server.port());
    return text;
}

/// The first answer of a server; what went wrong before goes to the text.
Task<std::optional<DNSReply>> ask(const NameServer& server, Transport transport, const DNSMessage& query,
                                  std::chrono::seconds timeout, std::string& out) {
    auto reply = co_await exchange(server, transport, query, timeout);
    if (reply && reply->isTruncated && transport == Transport::UDP) {
        out += ";; Truncated, retrying in TCP mode.\n";
        reply = co_await exchange(server, Transport::TCP, query, timeout);
    }
    if (reply)
        co_return std::move(*reply);
    const char* const reason = reply.error() == ETIMEDOUT ? "timed out" : std::strerror(reply.error());
    out += ";; communications error to " + endpointText(server) + ": " + reason + '\n';
    co_return std::nullopt;
}

void appendReply(std::string& out, const DNSReply& reply, const NameServer& server) {
    out += describeReply(reply.message);
    out += "\n;; Query time: ";
    appendNumber(out,
                 static_cast<std::uint64_t>(std::chrono::floor<std::chrono::milliseconds>(reply.duration).count()));
    out += " msec\n;; SERVER: " + endpointText(server) + '(' + printable(server.text()) + ')';
    out += reply.transport == Transport::TCP ? " (TCP)" : " (UDP)";
    out += "\n;; MSG SIZE  rcvd: ";
    appendNumber(out, reply.message.size());
    out += "\n\n";
}

Task<ToolResult> lookUp(const DigRequest& request, const DNSMessage& query, Resolver& resolver) {
    std::string out;
    for (std::int64_t attempt = 0; attempt < request.tries; ++attempt) {
        for (const NameServer& server : nameServers(*resolver.state())) {
            if (const auto reply = co_await ask(server, resolver.transport(), query, request.timeout, out)) {
                appendReply(out, *reply, server);
                co_return succeeded(std::move(out));
            }
        }
    }
    co_return ToolResult{exitNoServerReached, out + ";; no servers could be reached\n", {}};
}

Task<ToolResult> dig(std::optional<DigRequest> request) {
    if (!request)
        co_return usageError("dig [+time=SECONDS] [+tries=COUNT] DOMAIN");
    Resolver resolver;
    if (!resolver.isReady())
        co_return systemError("dig", "reading the resolver's configuration", errno);
    const auto query = makeAddressQuery(resolver.state(), request->domain);
    if (!query)
        co_return failed("dig: '" + printable(request->domain) + "' is not a legal name", exitInternalError);
    co_return co_await lookUp(*request, *query, resolver);
}

} // namespace

Task<ToolResult> runDig(ToolArguments arguments) {
    return dig(parseRequest(arguments));
}

} // namespace tolvo::tools

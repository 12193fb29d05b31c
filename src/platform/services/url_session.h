#pragma once

#include "core/async/task.h"
#include "core/model/url.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvo {

enum class HTTPMethod { Get, Post };

/// Keep gives the body; Count only counts its bytes.
enum class ResponseBody { Keep, Count };

/// Shared takes any connection, also beside other requests. Own takes one that no other request uses at that moment,
/// and leaves it for a later one. Fresh connects anew, to an address looked up a few seconds ago at most, and resets
/// the connection at the end: it sees the network as it is now, also where kept connections would be let through, and
/// leaves no socket behind.
enum class ConnectionUse { Shared, Own, Fresh };

/// An HTTP request. Redirects are never followed: a 3xx is a response like any other. http and https only. Neither
/// cookies nor a cache are kept.
struct URLRequest {
    URL url;
    HTTPMethod method = HTTPMethod::Get;
    std::vector<std::pair<std::string, std::string>> headers{};
    /// Seconds without a byte in either direction after which the request fails as TimedOut. Set alone where the amount
    /// is large and the link may be slow, as in a speed test.
    double timeout = 60;
    /// Seconds that the whole request may take; without it a trickle may go on for ever. Set where a small answer is
    /// expected, as in a portal probe or an update check.
    std::optional<double> totalTimeout{};
    /// Sent as it is; many requests may share it.
    std::shared_ptr<const std::string> body{};
    /// Bytes to send, the body being repeated as often as that takes; without it, the body once.
    std::optional<std::int64_t> bodyLength{};
    ResponseBody responseBody = ResponseBody::Keep;
    /// Bytes of the answer's body, kept or counted, beyond which the transfer is ended and what came is the body.
    std::size_t bodyLimit = 1 << 20;
    ConnectionUse connectionUse = ConnectionUse::Shared;
};

struct HTTPResponse {
    int statusCode = 0;
    /// In order of arrival, names in lower case.
    std::vector<std::pair<std::string, std::string>> headers;
    /// Bytes in no particular encoding.
    std::string body;
    /// Bytes of the body as they arrived, kept or not.
    std::int64_t receivedBodyBytes = 0;

    /// The first header of this name (in lower case).
    std::optional<std::string> header(std::string_view name) const {
        for (const auto& [candidate, value] : headers) {
            if (candidate == name)
                return value;
        }
        return std::nullopt;
    }
};

struct URLSessionError {
    enum class Kind { UnsupportedURL, CannotResolve, CannotConnect, TimedOut, Security, NotHTTP, ConnectionLost };
    Kind kind = Kind::ConnectionLost;
    /// In words for a person.
    std::string description;

    bool operator==(const URLSessionError&) const = default;
};

using URLSessionOutcome = std::expected<HTTPResponse, URLSessionError>;

/// Carries out HTTP requests off the main thread, with the user's proxies and the system's certificates.
class URLSession {
public:
    URLSession(const URLSession&) = delete;
    URLSession& operator=(const URLSession&) = delete;
    virtual ~URLSession() = default;

    /// A cancelled task ends the transfer and throws CancellationError; dropping it ends the transfer too. Any status
    /// code is a response. Resumes on the main thread.
    virtual Task<URLSessionOutcome> data(URLRequest request) = 0;

protected:
    URLSession() = default;
};

} // namespace tolvo

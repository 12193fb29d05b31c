#include "platform/linux/curl_error.h"

namespace tolvo {

namespace {

using Kind = URLSessionError::Kind;

Kind kindOf(CURLcode code) {
    switch (code) {
    case CURLE_URL_MALFORMAT:
        return Kind::UnsupportedURL;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return Kind::CannotResolve;
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
        return Kind::CannotConnect;
    case CURLE_OPERATION_TIMEDOUT:
        return Kind::TimedOut;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return Kind::Security;
    // The library's words for an answer without an HTTP status line, and for a header line beyond its limit.
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_OUT_OF_MEMORY:
    case CURLE_WEIRD_SERVER_REPLY:
        return Kind::NotHTTP;
    default:
        return Kind::ConnectionLost;
    }
}

const char* words(Kind kind) {
    switch (kind) {
    case Kind::UnsupportedURL:
        return "The address is not a web address.";
    case Kind::CannotResolve:
        return "The server's name could not be found.";
    case Kind::CannotConnect:
        return "Could not connect to the server.";
    case Kind::TimedOut:
        return "The request timed out.";
    case Kind::Security:
        return "A secure connection to the server could not be made.";
    case Kind::NotHTTP:
        return "The server's answer is not HTTP.";
    case Kind::ConnectionLost:
        return "The connection was lost.";
    }
    return "";
}

} // namespace

URLSessionError urlSessionError(Kind kind) {
    return {kind, words(kind)};
}

URLSessionError urlSessionError(CURLcode code) {
    return urlSessionError(kindOf(code));
}

} // namespace tolvo

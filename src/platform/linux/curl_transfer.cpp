#include "platform/linux/curl_transfer.h"

#include "platform/linux/curl_error.h"

#include <sys/socket.h>

#include <algorithm>
#include <utility>

namespace tolvo {

namespace {

/// With the default of 16 KiB a fast link costs twice the system calls.
constexpr long bulkBufferBytes = 262'144;

/// Parsing a bundle takes some 15 ms, so it is kept; an authority that was added counts after this time.
constexpr long certificateCacheSeconds = 3600;

/// A look-up takes a thread of its own and some forty system calls. A portal that answers for the name servers is
/// noticed so much later.
constexpr long freshAddressSeconds = 5;

std::int64_t bodyLength(const URLRequest& request) {
    return request.bodyLength.value_or(request.body ? static_cast<std::int64_t>(request.body->size()) : 0);
}

MonotonicTime later(MonotonicTime start, double seconds) {
    // Longer than any request lasts, and far from overflow.
    constexpr double longest = 1e8;
    return start + std::chrono::ceil<MonotonicTime::duration>(Seconds(std::clamp(seconds, 0.0, longest)));
}

/// The library's own sockets would be inherited by every tool that is started meanwhile.
curl_socket_t openSocket(void*, curlsocktype, curl_sockaddr* address) {
    return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

/// A connection that is closed in order stays in the kernel's table for a minute. Probes that connect anew all the time
/// would fill it with hundreds, which looks like the pressure that the connection counts are there to find.
int closeWithoutTrace(void*, curl_socket_t socket, curlsocktype) {
    const linger reset{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
    return CURL_SOCKOPT_OK;
}

} // namespace

CurlTransfer::CurlTransfer(URLRequest request, const CurlTransferSettings& settings, CURLSH* share, MonotonicTime now)
    : request_(std::move(request)),
      upload_(request_.body, bodyLength(request_)),
      collector_(request_.responseBody, request_.bodyLimit),
      endsAt_(request_.totalTimeout ? later(now, *request_.totalTimeout) : MonotonicTime::max()),
      lastProgress_(now),
      handle_(curl_easy_init()) {
    set(CURLOPT_URL, request_.url.text().c_str());
    set(CURLOPT_USERAGENT, settings.userAgent.c_str());
    curl_easy_setopt(handle(), CURLOPT_SHARE, share);
    applySafety();
    applyCertificates(settings.certificates);
    applyConnectionUse();
    applyMethod();
    applyHeaders();
    applyCallbacks();
}

void CurlTransfer::applySafety() {
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 0L);
    set(CURLOPT_NOSIGNAL, 1L);
    // A look-up that hangs must not hold up the end of its transfer.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(handle(), CURLOPT_OPENSOCKETFUNCTION, &openSocket);
}

void CurlTransfer::applyCertificates(const CertificateStore& certificates) {
    const auto orNone = [](const std::string& path) { return path.empty() ? nullptr : path.c_str(); };
    set(CURLOPT_CAINFO, orNone(certificates.bundleFile));
    // The library's own default directory has to go: with one, nothing of the store is kept.
    set(CURLOPT_CAPATH, orNone(certificates.directory));
    set(CURLOPT_PROXY_CAINFO, orNone(certificates.bundleFile));
    set(CURLOPT_PROXY_CAPATH, orNone(certificates.directory));
    set(CURLOPT_CA_CACHE_TIMEOUT, certificateCacheSeconds);
}

void CurlTransfer::applyConnectionUse() {
    if (request_.connectionUse == ConnectionUse::Shared)
        return;
    // Over HTTP/1.1 a connection carries one request at a time.
    set(CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    if (request_.connectionUse == ConnectionUse::Fresh) {
        set(CURLOPT_FRESH_CONNECT, 1L);
        set(CURLOPT_FORBID_REUSE, 1L);
        set(CURLOPT_DNS_CACHE_TIMEOUT, freshAddressSeconds);
        curl_easy_setopt(handle(), CURLOPT_SOCKOPTFUNCTION, &closeWithoutTrace);
    }
}

void CurlTransfer::applyMethod() {
    if (request_.method == HTTPMethod::Get)
        return;
    set(CURLOPT_POST, 1L);
    curl_easy_setopt(handle(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(upload_.length()));
    curl_easy_setopt(handle(), CURLOPT_READFUNCTION, &CurlTransfer::onUpload);
    curl_easy_setopt(handle(), CURLOPT_READDATA, this);
    // Needed when a kept connection turns out to be dead after the first bytes.
    curl_easy_setopt(handle(), CURLOPT_SEEKFUNCTION, &CurlTransfer::onRewind);
    curl_easy_setopt(handle(), CURLOPT_SEEKDATA, this);
    set(CURLOPT_UPLOAD_BUFFERSIZE, bulkBufferBytes);
}

void CurlTransfer::applyHeaders() {
    const auto append = [this](const std::string& line) {
        headers_.reset(curl_slist_append(headers_.release(), line.c_str()));
    };
    for (const auto& [name, value] : request_.headers) {
        std::string line = name;
        append(line.append(": ").append(value));
    }
    // A large body would wait for an interim answer first, which most servers never send.
    append("Expect:");
    curl_easy_setopt(handle(), CURLOPT_HTTPHEADER, headers_.get());
}

void CurlTransfer::applyCallbacks() {
    if (request_.responseBody == ResponseBody::Count)
        set(CURLOPT_BUFFERSIZE, bulkBufferBytes);
    curl_easy_setopt(handle(), CURLOPT_HEADERFUNCTION, &CurlTransfer::onHeader);
    curl_easy_setopt(handle(), CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle(), CURLOPT_WRITEFUNCTION, &CurlTransfer::onBody);
    curl_easy_setopt(handle(), CURLOPT_WRITEDATA, this);
}

std::size_t CurlTransfer::onHeader(char* bytes, std::size_t, std::size_t count, void* transfer) {
    const bool wasTaken = static_cast<CurlTransfer*>(transfer)->collector_.addHeaderLine({bytes, count});
    return wasTaken ? count : CURL_WRITEFUNC_ERROR;
}

std::size_t CurlTransfer::onBody(char* bytes, std::size_t, std::size_t count, void* transfer) {
    const bool wasTaken = static_cast<CurlTransfer*>(transfer)->collector_.addBody({bytes, count});
    return wasTaken ? count : CURL_WRITEFUNC_ERROR;
}

std::size_t CurlTransfer::onUpload(char* target, std::size_t, std::size_t room, void* transfer) {
    return static_cast<CurlTransfer*>(transfer)->upload_.read(target, room);
}

int CurlTransfer::onRewind(void* transfer, curl_off_t position, int) {
    static_cast<CurlTransfer*>(transfer)->upload_.seek(position);
    return CURL_SEEKFUNC_OK;
}

void CurlTransfer::noteProgress(MonotonicTime now) {
    curl_off_t sentBytes = 0;
    curl_easy_getinfo(handle(), CURLINFO_SIZE_UPLOAD_T, &sentBytes);
    const std::int64_t movedBytes = collector_.receivedBytes() + sentBytes;
    if (std::exchange(movedBytes_, movedBytes) != movedBytes)
        lastProgress_ = now;
}

MonotonicTime CurlTransfer::deadline() const {
    return std::min(endsAt_, later(lastProgress_, request_.timeout));
}

std::optional<std::string> CurlTransfer::addressOfKeptConnection() const {
    const char* address = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_LOCAL_IP, &address);
    const bool isKept = request_.connectionUse != ConnectionUse::Fresh && address && *address;
    return isKept ? std::optional<std::string>(address) : std::nullopt;
}

URLSessionOutcome CurlTransfer::takeOutcome(CURLcode code) {
    if (collector_.hasTooManyHeaders())
        return std::unexpected(urlSessionError(URLSessionError::Kind::NotHTTP));
    if (code != CURLE_OK && !collector_.isBodyFull())
        return std::unexpected(urlSessionError(code));
    // A head that the server broke off counts as a whole one for the library.
    if (!collector_.hasWholeHead())
        return std::unexpected(urlSessionError(URLSessionError::Kind::ConnectionLost));
    long statusCode = 0;
    curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &statusCode);
    return collector_.takeResponse(static_cast<int>(statusCode));
}

} // namespace tolvo

#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/curl_handles.h"
#include "platform/linux/curl_transfer_settings.h"
#include "platform/linux/response_collector.h"
#include "platform/linux/upload_source.h"
#include "platform/services/url_session.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tolvo {

/// One exchange on its way: the library's handle and what it has brought so far. It stays where it is, since the handle
/// points to it. Transfer thread only.
class CurlTransfer {
public:
    CurlTransfer(URLRequest request, const CurlTransferSettings& settings, CURLSH* share, MonotonicTime now);
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    CURL* handle() const { return handle_.get(); }

    /// Takes note of bytes that moved since the last call.
    void noteProgress(MonotonicTime now);
    /// When it counts as timed out, if nothing moves until then.
    MonotonicTime deadline() const;

    /// This machine's address on the connection that is left for later requests, if one is.
    std::optional<std::string> addressOfKeptConnection() const;

    /// What the end that the library tells means. Once.
    URLSessionOutcome takeOutcome(CURLcode code);

private:
    void set(CURLoption option, long value) { curl_easy_setopt(handle_.get(), option, value); }
    void set(CURLoption option, const char* value) { curl_easy_setopt(handle_.get(), option, value); }
    void applySafety();
    void applyCertificates(const CertificateStore& certificates);
    void applyConnectionUse();
    void applyMethod();
    void applyHeaders();
    void applyCallbacks();

    static std::size_t onHeader(char* bytes, std::size_t, std::size_t count, void* transfer);
    static std::size_t onBody(char* bytes, std::size_t, std::size_t count, void* transfer);
    static std::size_t onUpload(char* target, std::size_t, std::size_t room, void* transfer);
    static int onRewind(void* transfer, curl_off_t position, int);

    URLRequest request_;
    UploadSource upload_;
    ResponseCollector collector_;
    MonotonicTime endsAt_;
    MonotonicTime lastProgress_;
    std::int64_t movedBytes_ = 0;
    CurlList headers_;
    CurlEasyHandle handle_;
};

} // namespace tolvo

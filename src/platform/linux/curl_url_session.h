#pragma once

#include "core/async/one_shot.h"
#include "platform/linux/curl_transfer_settings.h"
#include "platform/services/url_session.h"

#include <cstdint>
#include <map>
#include <memory>

namespace tolvo {

class CurlTransferThread;

/// HTTP over libcurl, on one transfer thread: HTTP/1.1 and 2, IPv4 and IPv6 side by side, the proxies that the
/// environment names. It outlives the tasks that use it; its end doesn't wait for a server or a look-up.
class CurlURLSession final : public URLSession {
public:
    CurlURLSession(MainLoop& loop, CurlTransferSettings settings);
    ~CurlURLSession() override;

    Task<URLSessionOutcome> data(URLRequest request) override;

private:
    using PendingOutcomes = std::map<std::uint64_t, OneShot<URLSessionOutcome>>;

    /// A transfer for as long as its task waits for it.
    class Exchange {
    public:
        Exchange(CurlURLSession& session, URLRequest request);
        Exchange(const Exchange&) = delete;
        Exchange& operator=(const Exchange&) = delete;
        ~Exchange();

        Task<URLSessionOutcome> outcome() const { return outcome_.take(); }

    private:
        CurlURLSession& session_;
        std::uint64_t id_;
        OneShot<URLSessionOutcome> outcome_;
    };

    // Shared with what the transfer thread posts, which may still be queued when the session is gone.
    std::shared_ptr<PendingOutcomes> pending_ = std::make_shared<PendingOutcomes>();
    std::uint64_t nextID_ = 1;
    std::unique_ptr<CurlTransferThread> thread_;
};

} // namespace tolvo

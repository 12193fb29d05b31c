#include "platform/linux/curl_url_session.h"

#include "platform/linux/curl_error.h"
#include "platform/linux/curl_transfer_thread.h"

namespace tolvo {

namespace {

bool isWebAddress(const URL& url) {
    return (url.scheme() == "http" || url.scheme() == "https") && !url.host().empty();
}

} // namespace

CurlURLSession::CurlURLSession(MainLoop& loop, CurlTransferSettings settings) {
    const std::weak_ptr pending = pending_;
    thread_ = std::make_unique<CurlTransferThread>(
        std::move(settings), [&loop, pending](std::uint64_t id, URLSessionOutcome outcome) {
            loop.post([pending, id, outcome = std::move(outcome)]() mutable {
                const auto outcomes = pending.lock();
                if (!outcomes)
                    return;
                if (const auto waiting = outcomes->find(id); waiting != outcomes->end())
                    waiting->second.set(std::move(outcome));
            });
        });
}

CurlURLSession::~CurlURLSession() = default;

CurlURLSession::Exchange::Exchange(CurlURLSession& session, URLRequest request)
    : session_(session), id_(session.nextID_++) {
    session_.pending_->emplace(id_, outcome_);
    session_.thread_->start(id_, std::move(request));
}

CurlURLSession::Exchange::~Exchange() {
    session_.pending_->erase(id_);
    if (!outcome_.isSet())
        session_.thread_->cancel(id_);
}

Task<URLSessionOutcome> CurlURLSession::data(URLRequest request) {
    if (!isWebAddress(request.url))
        co_return std::unexpected(urlSessionError(URLSessionError::Kind::UnsupportedURL));
    const TaskContext context = co_await currentContext();
    if (context.stopToken.stop_requested())
        throw CancellationError();
    const Exchange exchange(*this, std::move(request));
    co_return co_await exchange.outcome();
}

} // namespace tolvo

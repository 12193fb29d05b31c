#include "platform/linux/curl_transfer_thread.h"

#include "platform/linux/unique_descriptor.h"

#include <netdb.h>
#include <signal.h>
#include <sys/socket.h>
#include <time.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace tolvo {

namespace {

/// How long connections are kept when nothing uses them. Beyond, servers close them, and a closed one that is kept
/// shows up among the machine's orphaned sockets.
constexpr auto keptConnectionTime = std::chrono::seconds(30);

/// Goes on while the machine sleeps, unlike the steady clock: what was kept over a sleep is as old as that.
std::chrono::nanoseconds timeSinceBoot() {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Whether the machine still has this address. To what is sent from another one no answer comes, nor an error.
bool isOwnAddress(const std::string& address) {
    addrinfo numeric{};
    numeric.ai_flags = AI_NUMERICHOST;
    numeric.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(address.c_str(), nullptr, &numeric, &found) != 0)
        return true;
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, &::freeaddrinfo);
    const UniqueDescriptor socket(::socket(found->ai_family, found->ai_socktype | SOCK_CLOEXEC, 0));
    return !socket || ::bind(socket.get(), found->ai_addr, found->ai_addrlen) == 0 || errno != EADDRNOTAVAIL;
}

/// No signal is delivered to the transfer thread or to the library's look-up threads, which inherit this.
std::thread startWithoutSignals(std::function<void()> body) {
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &previous);
    std::thread thread(std::move(body));
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    return thread;
}

} // namespace

CurlTransferThread::CurlTransferThread(CurlTransferSettings settings, OnEnd onEnd)
    : settings_(std::move(settings)), onEnd_(std::move(onEnd)), share_(curl_share_init()), multi_(curl_multi_init()) {
    // Where a connection couldn't be kept, a TLS session that is taken up again spares most of the handshake.
    curl_share_setopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
    thread_ = startWithoutSignals([this] { run(); });
}

CurlTransferThread::~CurlTransferThread() {
    order([](Orders& orders) { orders.isStopping = true; });
    thread_.join();
}

void CurlTransferThread::start(TransferID id, URLRequest request) {
    order([&](Orders& orders) { orders.starts.emplace_back(id, std::move(request)); });
}

void CurlTransferThread::cancel(TransferID id) {
    order([id](Orders& orders) { orders.cancels.push_back(id); });
}

void CurlTransferThread::order(const std::function<void(Orders&)>& change) {
    const std::lock_guard lock(ordersMutex_);
    change(orders_);
    curl_multi_wakeup(multi_.get());
}

CurlTransferThread::Orders CurlTransferThread::takeOrders() {
    const std::lock_guard lock(ordersMutex_);
    return std::exchange(orders_, {});
}

void CurlTransferThread::run() {
    while (true) {
        Orders orders = takeOrders();
        if (orders.isStopping)
            break;
        obey(std::move(orders));
        int runningCount = 0;
        curl_multi_perform(multi_.get(), &runningCount);
        endFinished();
        endOverdue();
        waitForWork();
    }
    while (!transfers_.empty())
        drop(transfers_.begin());
}

void CurlTransferThread::obey(Orders orders) {
    for (auto& [id, request] : orders.starts)
        begin(id, std::move(request));
    for (const TransferID id : orders.cancels) {
        if (const auto position = transfers_.find(id); position != transfers_.end())
            drop(position);
    }
}

void CurlTransferThread::begin(TransferID id, URLRequest&& request) {
    const bool mayTakeKeptOne = request.connectionUse != ConnectionUse::Fresh && hasKeptConnections_;
    if (mayTakeKeptOne && transfers_.empty() && !isOwnAddress(keptFrom_))
        closeKeptConnections();
    const auto [position, _] =
        transfers_.try_emplace(id, std::move(request), settings_, share_.get(), std::chrono::steady_clock::now());
    CURL* const handle = position->second.handle();
    curl_easy_setopt(handle, CURLOPT_PRIVATE, &position->first);
    curl_multi_add_handle(multi_.get(), handle);
    hasKeptConnections_ = true;
}

void CurlTransferThread::endFinished() {
    int queuedCount = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &queuedCount)) {
        const CURLcode code = message->data.result;
        const TransferID* id = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &id);
        end(transfers_.find(*id), code);
    }
}

void CurlTransferThread::endOverdue() {
    const MonotonicTime now = std::chrono::steady_clock::now();
    for (auto position = transfers_.begin(); position != transfers_.end();) {
        const auto current = position++;
        current->second.noteProgress(now);
        if (current->second.deadline() <= now)
            end(current, CURLE_OPERATION_TIMEDOUT);
    }
}

void CurlTransferThread::end(Transfers::iterator position, CURLcode code) {
    const TransferID id = position->first;
    if (const auto address = position->second.addressOfKeptConnection())
        keptFrom_ = *address;
    URLSessionOutcome outcome = position->second.takeOutcome(code);
    drop(position);
    onEnd_(id, std::move(outcome));
}

void CurlTransferThread::drop(Transfers::iterator position) {
    curl_multi_remove_handle(multi_.get(), position->second.handle());
    transfers_.erase(position);
}

void CurlTransferThread::waitForWork() {
    using Milliseconds = std::chrono::duration<int, std::milli>;
    const bool isIdle = transfers_.empty();
    MonotonicTime::duration wait = hasKeptConnections_ ? keptConnectionTime : std::chrono::hours(1);
    const MonotonicTime now = std::chrono::steady_clock::now();
    for (const auto& [id, transfer] : transfers_)
        wait = std::min(wait, transfer.deadline() - now);
    const auto milliseconds = std::max(std::chrono::ceil<Milliseconds>(wait), Milliseconds(0));
    const auto waitStart = timeSinceBoot();
    curl_multi_poll(multi_.get(), nullptr, 0, milliseconds.count(), nullptr);
    if (isIdle && hasKeptConnections_ && timeSinceBoot() - waitStart >= keptConnectionTime)
        closeKeptConnections();
}

void CurlTransferThread::closeKeptConnections() {
    CurlMultiHandle multi(curl_multi_init());
    const std::lock_guard lock(ordersMutex_);
    multi_.swap(multi);
    // Orders that came meanwhile woke the one that goes.
    curl_multi_wakeup(multi_.get());
    hasKeptConnections_ = false;
}

} // namespace tolvo

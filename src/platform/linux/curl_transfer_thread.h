#pragma once

#include "platform/linux/curl_transfer.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tolvo {

/// Carries out all transfers of a session on one thread of its own. Its operations are for the main thread and don't
/// wait; its end waits until the thread has ended, with the transfers that were left.
class CurlTransferThread {
public:
    using TransferID = std::uint64_t;
    /// Called on the transfer thread, once for each transfer that was not cancelled.
    using OnEnd = std::function<void(TransferID, URLSessionOutcome)>;

    CurlTransferThread(CurlTransferSettings settings, OnEnd onEnd);
    CurlTransferThread(const CurlTransferThread&) = delete;
    CurlTransferThread& operator=(const CurlTransferThread&) = delete;
    ~CurlTransferThread();

    void start(TransferID id, URLRequest request);
    /// Does nothing when it has ended.
    void cancel(TransferID id);

private:
    struct Orders {
        std::vector<std::pair<TransferID, URLRequest>> starts;
        std::vector<TransferID> cancels;
        bool isStopping = false;
    };
    using Transfers = std::map<TransferID, CurlTransfer>;

    void order(const std::function<void(Orders&)>& change);
    Orders takeOrders();

    // On the transfer thread.
    void run();
    void obey(Orders orders);
    void begin(TransferID id, URLRequest&& request);
    void endFinished();
    void endOverdue();
    void end(Transfers::iterator position, CURLcode code);
    void drop(Transfers::iterator position);
    void waitForWork();
    void closeKeptConnections();

    CurlLibrary library_;
    const CurlTransferSettings settings_;
    const OnEnd onEnd_;
    CurlShareHandle share_;
    CurlMultiHandle multi_;
    Transfers transfers_;
    bool hasKeptConnections_ = false;
    /// This machine's end of the one that was used last.
    std::string keptFrom_;

    /// Guards the orders, and the handle against a wake-up while it is exchanged.
    std::mutex ordersMutex_;
    Orders orders_;
    std::thread thread_;
};

} // namespace tolvo

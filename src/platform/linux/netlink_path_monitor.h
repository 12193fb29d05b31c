#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/unique_descriptor.h"
#include "platform/services/path_monitor.h"

#include <filesystem>

namespace tolvo {

/// Follows the kernel's links, addresses, routes and routing rules. Events only say that something changed: the state
/// is then read anew, a little later and once for a burst of them. So an overrun needs no care of its own, nor do the
/// IPv4 routes that the kernel drops without a word when a link goes down. The loop outlives it.
class NetlinkPathMonitor final : public PathMonitor {
public:
    /// The directory tells which devices are Wi-Fi or modems.
    explicit NetlinkPathMonitor(MainLoop& loop, std::filesystem::path sysClassNet = "/sys/class/net");

    void start(Handler pathUpdateHandler) override;
    void cancel() override;

private:
    void open();
    void handleEvents();
    void evaluateAfter(Seconds delay);
    void evaluate();
    void tell(const NetworkPath& path);
    void openLater();

    MainLoop& loop_;
    const std::filesystem::path sysClassNet_;
    Handler handler_;
    UniqueDescriptor events_;
    Seconds retryDelay_{};
    int discardedReadings_ = 0;
    bool isEvaluationDue_ = false;
    LoopRegistration watch_;
    LoopRegistration timer_;
};

} // namespace tolvo

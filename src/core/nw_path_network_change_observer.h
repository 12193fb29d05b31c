#pragma once

#include "core/async/main_loop.h"
#include "core/network_change_observing.h"
#include "platform/services/path_monitor.h"

#include <memory>
#include <optional>

namespace tolvo {

/// Picks from the path monitor's updates those that change whether there is a path or over which kinds of interface it
/// leads. A change of address or route within that is not told. The loop and the monitor outlive it.
class NWPathNetworkChangeObserver final : public NetworkChangeObserving {
public:
    NWPathNetworkChangeObserver(MainLoop& callbackLoop, PathMonitor& pathMonitor);
    ~NWPathNetworkChangeObserver() override;

    void startObserving() override;
    void stopObserving() override;

private:
    struct PathSignature {
        PathStatus status;
        bool usesWiFi;
        bool usesWiredEthernet;
        bool usesCellular;
        bool usesOtherInterface;

        bool operator==(const PathSignature&) const = default;
    };

    void pathDidUpdate(const NetworkPath& path);
    void postNetworkChange();

    MainLoop& callbackLoop_;
    PathMonitor& pathMonitor_;
    bool isObserving_ = false;
    /// Absent until the first update has arrived.
    std::optional<PathSignature> previousSignature_;
    /// Tells posted callbacks whether this object is still there.
    std::shared_ptr<NWPathNetworkChangeObserver*> self_ = std::make_shared<NWPathNetworkChangeObserver*>(this);
};

} // namespace tolvo

#include "core/nw_path_network_change_observer.h"

#include <utility>

namespace tolvo {

NWPathNetworkChangeObserver::NWPathNetworkChangeObserver(MainLoop& callbackLoop, PathMonitor& pathMonitor)
    : callbackLoop_(callbackLoop), pathMonitor_(pathMonitor) {}

NWPathNetworkChangeObserver::~NWPathNetworkChangeObserver() {
    stopObserving();
}

void NWPathNetworkChangeObserver::startObserving() {
    if (!std::exchange(isObserving_, true))
        pathMonitor_.start([this](const NetworkPath& path) { pathDidUpdate(path); });
}

void NWPathNetworkChangeObserver::stopObserving() {
    if (std::exchange(isObserving_, false))
        pathMonitor_.cancel();
    previousSignature_.reset();
}

void NWPathNetworkChangeObserver::pathDidUpdate(const NetworkPath& path) {
    const PathSignature signature{path.status, path.usesWiFi, path.usesWiredEthernet, path.usesCellular,
                                  path.usesOther};
    const auto previous = std::exchange(previousSignature_, signature);
    if (previous && *previous != signature)
        postNetworkChange();
}

void NWPathNetworkChangeObserver::postNetworkChange() {
    callbackLoop_.post([weakSelf = std::weak_ptr(self_)] {
        if (const auto self = weakSelf.lock(); self && (*self)->onNetworkChange)
            (*self)->onNetworkChange();
    });
}

} // namespace tolvo

#pragma once

#include <functional>

namespace tolvo {

/// Tells of changes of the network path, never of its state at the start. Main thread only.
class NetworkChangeObserving {
public:
    NetworkChangeObserving(const NetworkChangeObserving&) = delete;
    NetworkChangeObserving& operator=(const NetworkChangeObserving&) = delete;
    virtual ~NetworkChangeObserving() = default;

    std::function<void()> onNetworkChange;

    /// Both may be repeated without effect.
    virtual void startObserving() = 0;
    virtual void stopObserving() = 0;

protected:
    NetworkChangeObserving() = default;
};

/// Never calls back.
class NoOpNetworkChangeObserver final : public NetworkChangeObserving {
public:
    void startObserving() override {}
    void stopObserving() override {}
};

} // namespace tolvo

#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/bus_connection.h"
#include "platform/linux/unique_descriptor.h"
#include "platform/services/sleep_notifications.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tolvo {

/// Tells of sleep as logind announces it, and holds a delay inhibitor so that logind waits until the observers have
/// stopped what they do. Without a bus or without logind it is silent, and takes both up again when they come back; if
/// they go while the machine is about to sleep, the wake that they can't announce any more is told at once. The loop
/// outlives it.
class LogindSleepNotifier final : public SleepNotifications {
public:
    explicit LogindSleepNotifier(MainLoop& loop, std::string busAddress = BusConnection::systemBusAddress(),
                                 BusConnection::RetryDelays retryDelays = {});

    Subscription addObserver(SleepNotification notification, Handler handler) override;

private:
    void listen();
    void logindAppeared();
    void logindVanished();
    void takeInhibitor();
    void receivePreparingForSleep(sd_bus_message& reply);
    void receiveInhibitor(sd_bus_message& reply);
    void receiveOwnerChange(sd_bus_message& signal);
    void preparesForSleep(bool isPreparing);
    void tell(SleepNotification notification);

    MainLoop& loop_;
    std::vector<std::pair<SleepNotification, std::weak_ptr<Handler>>> observers_;
    bool isAsleep_ = false;
    UniqueDescriptor inhibitor_;
    LoopRegistration inhibitorRelease_;
    BusConnection bus_;
    // After the bus, so that they go before it.
    BusConnection::OwnedSlot sleepSignals_;
    BusConnection::OwnedSlot ownerChanges_;
    BusConnection::OwnedSlot stateCall_;
    BusConnection::OwnedSlot inhibitCall_;
};

} // namespace tolvo

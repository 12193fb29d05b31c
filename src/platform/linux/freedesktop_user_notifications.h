#pragma once

#include "platform/linux/bus_connection.h"
#include "platform/services/user_notifications.h"

#include <cstdint>
#include <map>
#include <string>

namespace tolvo {

/// Shows notifications through the desktop's notification service, with a default action that is the user's click. The
/// session bus is joined with the first notification. What can't be shown, for want of a bus or of a service, is shown
/// when they come; what was shown goes with the service that showed it. The loop outlives it.
class FreedesktopUserNotifications final : public UserNotifications {
public:
    explicit FreedesktopUserNotifications(MainLoop& loop, std::string busAddress = BusConnection::sessionBusAddress(),
                                          BusConnection::RetryDelays retryDelays = {});

    /// A desktop has no such permission: who doesn't want our notifications tells the service.
    Task<NotificationAuthorization> authorizationStatus() override;
    Task<void> requestAuthorization() override;
    void add(UserNotificationRequest request) override;

private:
    struct Delivery {
        enum class State { Waiting, Sent, Shown };
        UserNotificationContent content;
        State state = State::Waiting;
        /// The service's; kept while a newer content takes the shown one's place.
        std::uint32_t id = 0;
        /// A service that ends over a notification, and is started again, isn't to be ended for ever.
        int attemptsLeft = 3;
        BusConnection::OwnedSlot capabilitiesCall;
        BusConnection::OwnedSlot notifyCall;
    };
    using Deliveries = std::map<std::string, Delivery>;

    void listen();
    void sendWaiting();
    void send(Delivery& delivery);
    void receiveCapabilities(sd_bus_message& reply, Delivery& delivery);
    void receiveID(sd_bus_message& reply, Delivery& delivery);
    void receiveOwnerChange(sd_bus_message& signal);
    void receiveAction(sd_bus_message& signal);
    void receiveClosed(sd_bus_message& signal);
    void serviceVanished();
    Deliveries::iterator deliveryOf(std::uint32_t id);

    bool hasJoinedBus_ = false;
    BusConnection bus_;
    // After the bus, so that they go before it.
    BusConnection::OwnedSlot ownerChanges_;
    BusConnection::OwnedSlot actions_;
    BusConnection::OwnedSlot closings_;
    Deliveries deliveries_;
};

} // namespace tolvo

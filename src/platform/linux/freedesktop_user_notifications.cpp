#include "platform/linux/freedesktop_user_notifications.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

namespace tolvo {

namespace {

constexpr const char* name = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr BusConnection::Method getCapabilities{name, path, name, "GetCapabilities"};
constexpr BusConnection::Method notify{name, path, name, "Notify"};

constexpr const char* ownerRule = "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                                  "interface='org.freedesktop.DBus',member='NameOwnerChanged',"
                                  "arg0='org.freedesktop.Notifications'";

/// The action that a click on the notification itself is, by the name that the protocol gives it.
constexpr std::string_view defaultAction = "default";

std::string signalRule(const char* member) {
    return std::string("type='signal',sender='") + name + "',path='" + path + "',interface='" + name + "',member='" +
           member + "'";
}

bool canShowMarkup(sd_bus_message& capabilities) {
    if (sd_bus_message_enter_container(&capabilities, 'a', "s") <= 0)
        return false;
    const char* capability = nullptr;
    while (sd_bus_message_read_basic(&capabilities, 's', static_cast<void*>(&capability)) > 0) {
        if (capability == std::string_view("body-markup"))
            return true;
    }
    return false;
}

std::string escapedForMarkup(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else
            result += c;
    }
    return result;
}

bool writeHints(sd_bus_message& call, bool hasDefaultSound) {
    if (hasDefaultSound)
        return sd_bus_message_append(&call, "a{sv}", 2, "desktop-entry", "s", "tolvo", "sound-name", "s",
                                     "message-new-instant") >= 0;
    return sd_bus_message_append(&call, "a{sv}", 2, "desktop-entry", "s", "tolvo", "suppress-sound", "b", 1) >= 0;
}

bool writeNotification(sd_bus_message& call, const UserNotificationContent& content, const std::string& body,
                       std::uint32_t replacedID) {
    constexpr int serviceDecidesHowLong = -1;
    return sd_bus_message_append(&call, "susssas", "Tolvo", replacedID, "tolvo", content.title.c_str(), body.c_str(), 2,
                                 defaultAction.data(), "Open") >= 0 &&
           writeHints(call, content.hasDefaultSound) && sd_bus_message_append(&call, "i", serviceDecidesHowLong) >= 0;
}

} // namespace

FreedesktopUserNotifications::FreedesktopUserNotifications(MainLoop& loop, std::string busAddress,
                                                           BusConnection::RetryDelays retryDelays)
    : bus_(loop, std::move(busAddress), retryDelays) {
    bus_.onConnecting = [this] { listen(); };
    bus_.onDisconnected = [this] {
        ownerChanges_.reset();
        actions_.reset();
        closings_.reset();
        serviceVanished();
    };
}

Task<NotificationAuthorization> FreedesktopUserNotifications::authorizationStatus() {
    co_return NotificationAuthorization::Authorized;
}

Task<void> FreedesktopUserNotifications::requestAuthorization() {
    co_return;
}

void FreedesktopUserNotifications::add(UserNotificationRequest request) {
    Delivery& delivery = deliveries_[request.identifier];
    delivery.content = std::move(request.content);
    delivery.attemptsLeft = Delivery().attemptsLeft;
    send(delivery);
    if (!std::exchange(hasJoinedBus_, true))
        bus_.start();
}

void FreedesktopUserNotifications::listen() {
    ownerChanges_ = bus_.match(ownerRule, [this](sd_bus_message& signal) { receiveOwnerChange(signal); });
    actions_ = bus_.match(signalRule("ActionInvoked"), [this](sd_bus_message& signal) { receiveAction(signal); });
    closings_ = bus_.match(signalRule("NotificationClosed"), [this](sd_bus_message& signal) { receiveClosed(signal); });
    sendWaiting();
}

void FreedesktopUserNotifications::sendWaiting() {
    for (auto& [identifier, delivery] : deliveries_) {
        if (delivery.state == Delivery::State::Waiting && delivery.attemptsLeft > 0)
            send(delivery);
    }
}

/// Asks first whether the body's text has to be escaped.
void FreedesktopUserNotifications::send(Delivery& delivery) {
    const auto noArguments = [](sd_bus_message&) { return 0; };
    delivery.notifyCall.reset();
    delivery.capabilitiesCall = bus_.call(
        getCapabilities, noArguments,
        [this, &delivery](sd_bus_message& reply) { receiveCapabilities(reply, delivery); },
        BusConnection::ServiceStart::IfNeeded);
    delivery.state = delivery.capabilitiesCall ? Delivery::State::Sent : Delivery::State::Waiting;
}

void FreedesktopUserNotifications::receiveCapabilities(sd_bus_message& reply, Delivery& delivery) {
    if (sd_bus_message_is_method_error(&reply, nullptr) > 0) {
        delivery.state = Delivery::State::Waiting;
        return;
    }
    const UserNotificationContent& content = delivery.content;
    const std::string body = canShowMarkup(reply) ? escapedForMarkup(content.body) : content.body;
    --delivery.attemptsLeft;
    delivery.notifyCall = bus_.call(
        notify, [&](sd_bus_message& call) { return writeNotification(call, content, body, delivery.id) ? 0 : -EINVAL; },
        [this, &delivery](sd_bus_message& answer) { receiveID(answer, delivery); },
        BusConnection::ServiceStart::IfNeeded);
}

void FreedesktopUserNotifications::receiveID(sd_bus_message& reply, Delivery& delivery) {
    const bool isShown = sd_bus_message_read_basic(&reply, 'u', &delivery.id) > 0;
    delivery.state = isShown ? Delivery::State::Shown : Delivery::State::Waiting;
}

void FreedesktopUserNotifications::receiveOwnerChange(sd_bus_message& signal) {
    const char* service = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    if (sd_bus_message_read(&signal, "sss", &service, &oldOwner, &newOwner) <= 0)
        return;
    if (*oldOwner != '\0')
        serviceVanished();
    if (*newOwner != '\0')
        sendWaiting();
}

void FreedesktopUserNotifications::serviceVanished() {
    std::erase_if(deliveries_, [](const auto& entry) { return entry.second.state == Delivery::State::Shown; });
    for (auto& [identifier, delivery] : deliveries_) {
        delivery.capabilitiesCall.reset();
        delivery.notifyCall.reset();
        delivery.id = 0;
        delivery.state = Delivery::State::Waiting;
    }
}

void FreedesktopUserNotifications::receiveAction(sd_bus_message& signal) {
    std::uint32_t id = 0;
    const char* action = nullptr;
    if (sd_bus_message_read(&signal, "us", &id, &action) <= 0 || action != defaultAction)
        return;
    const auto found = deliveryOf(id);
    if (found == deliveries_.end() || !onResponse)
        return;
    const NotificationUserInfo userInfo = found->second.content.userInfo;
    onResponse(userInfo);
}

void FreedesktopUserNotifications::receiveClosed(sd_bus_message& signal) {
    std::uint32_t id = 0;
    if (sd_bus_message_read_basic(&signal, 'u', &id) <= 0)
        return;
    const auto found = deliveryOf(id);
    if (found == deliveries_.end())
        return;
    if (found->second.state == Delivery::State::Shown)
        deliveries_.erase(found);
    else
        found->second.id = 0;
}

/// The signals go to everybody, so most of them are about other programs' notifications.
FreedesktopUserNotifications::Deliveries::iterator FreedesktopUserNotifications::deliveryOf(std::uint32_t id) {
    return std::ranges::find_if(deliveries_, [id](const auto& entry) { return id != 0 && entry.second.id == id; });
}

} // namespace tolvo

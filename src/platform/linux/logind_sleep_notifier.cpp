#include "platform/linux/logind_sleep_notifier.h"

#include <fcntl.h>
#include <systemd/sd-bus.h>

#include <optional>

namespace tolvo {

namespace {

constexpr const char* logindName = "org.freedesktop.login1";
constexpr const char* logindPath = "/org/freedesktop/login1";
constexpr const char* managerInterface = "org.freedesktop.login1.Manager";
constexpr BusConnection::Method inhibit{logindName, logindPath, managerInterface, "Inhibit"};
constexpr BusConnection::Method getProperty{logindName, logindPath, "org.freedesktop.DBus.Properties", "Get"};

constexpr const char* sleepRule = "type='signal',sender='org.freedesktop.login1',path='/org/freedesktop/login1',"
                                  "interface='org.freedesktop.login1.Manager',member='PrepareForSleep'";
constexpr const char* ownerRule = "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                                  "interface='org.freedesktop.DBus',member='NameOwnerChanged',"
                                  "arg0='org.freedesktop.login1'";

/// What observers stop ends in the loop's next turns, the tools among it; logind itself waits five seconds at most.
constexpr Seconds releaseDelay(0.1);

std::optional<bool> readFlag(sd_bus_message& message) {
    int value = 0;
    if (sd_bus_message_read_basic(&message, 'b', &value) <= 0)
        return std::nullopt;
    return value != 0;
}

} // namespace

LogindSleepNotifier::LogindSleepNotifier(MainLoop& loop, std::string busAddress, BusConnection::RetryDelays retryDelays)
    : loop_(loop), bus_(loop, std::move(busAddress), retryDelays) {
    bus_.onConnecting = [this] { listen(); };
    bus_.onDisconnected = [this] {
        sleepSignals_.reset();
        ownerChanges_.reset();
        logindVanished();
    };
    bus_.start();
}

Subscription LogindSleepNotifier::addObserver(SleepNotification notification, Handler handler) {
    std::erase_if(observers_, [](const auto& observer) { return observer.second.expired(); });
    auto token = std::make_shared<Handler>(std::move(handler));
    observers_.emplace_back(notification, token);
    return Subscription(std::move(token));
}

void LogindSleepNotifier::listen() {
    sleepSignals_ = bus_.match(sleepRule, [this](sd_bus_message& signal) {
        if (const auto isPreparing = readFlag(signal))
            preparesForSleep(*isPreparing);
    });
    ownerChanges_ = bus_.match(ownerRule, [this](sd_bus_message& signal) { receiveOwnerChange(signal); });
    logindAppeared();
}

void LogindSleepNotifier::receiveOwnerChange(sd_bus_message& signal) {
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    if (sd_bus_message_read(&signal, "sss", &name, &oldOwner, &newOwner) <= 0)
        return;
    logindVanished();
    if (*newOwner != '\0')
        logindAppeared();
}

void LogindSleepNotifier::logindAppeared() {
    // Its signals were not heard until now, so it is asked where it stands.
    const auto writeProperty = [](sd_bus_message& call) {
        return sd_bus_message_append(&call, "ss", managerInterface, "PreparingForSleep");
    };
    stateCall_ =
        bus_.call(getProperty, writeProperty, [this](sd_bus_message& reply) { receivePreparingForSleep(reply); });
    takeInhibitor();
}

void LogindSleepNotifier::logindVanished() {
    stateCall_.reset();
    inhibitCall_.reset();
    inhibitorRelease_.reset();
    inhibitor_.reset();
    if (std::exchange(isAsleep_, false))
        tell(SleepNotification::DidWake);
}

void LogindSleepNotifier::receivePreparingForSleep(sd_bus_message& reply) {
    if (sd_bus_message_enter_container(&reply, 'v', "b") <= 0)
        return;
    if (const auto isPreparing = readFlag(reply))
        preparesForSleep(*isPreparing);
}

void LogindSleepNotifier::takeInhibitor() {
    if (inhibitor_)
        return;
    const auto writeRequest = [](sd_bus_message& call) {
        return sd_bus_message_append(&call, "ssss", "sleep", "Tolvo", "Monitoring stops before the system sleeps",
                                     "delay");
    };
    inhibitCall_ = bus_.call(inhibit, writeRequest, [this](sd_bus_message& reply) { receiveInhibitor(reply); });
}

void LogindSleepNotifier::receiveInhibitor(sd_bus_message& reply) {
    int borrowed = -1;
    // One that comes after the observers were told has nothing to delay.
    if (isAsleep_ || sd_bus_message_read_basic(&reply, 'h', &borrowed) <= 0)
        return;
    inhibitor_ = UniqueDescriptor(::fcntl(borrowed, F_DUPFD_CLOEXEC, 3));
}

void LogindSleepNotifier::preparesForSleep(bool isPreparing) {
    if (std::exchange(isAsleep_, isPreparing) == isPreparing)
        return;
    if (isPreparing) {
        tell(SleepNotification::WillSleep);
        inhibitorRelease_ = loop_.after(releaseDelay, [this] { inhibitor_.reset(); });
        return;
    }
    inhibitorRelease_.reset();
    takeInhibitor();
    tell(SleepNotification::DidWake);
}

void LogindSleepNotifier::tell(SleepNotification notification) {
    const auto observers = observers_;
    for (const auto& [wanted, handler] : observers) {
        if (const auto observer = wanted == notification ? handler.lock() : nullptr)
            (*observer)();
    }
}

} // namespace tolvo

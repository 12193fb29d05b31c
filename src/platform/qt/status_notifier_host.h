#pragma once

#include "platform/qt/dbus_signal_listener.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>
#include <optional>
#include <vector>

namespace tolvo {

/// Registers an item on one bus connection with the status area's watcher, and again whenever a new one appears.
class StatusNotifierHost final : public QObject {
public:
    /// onChange tells whether a status area shows the item: once soon, then on each change.
    StatusNotifierHost(const QDBusConnection& connection, std::function<void(bool isPresent)> onChange);
    ~StatusNotifierHost() override;

private:
    void registerItem();
    void askForHost();
    void tell(bool isPresent);

    QDBusConnection connection_;
    std::function<void(bool)> onChange_;
    std::optional<bool> told_;
    QDBusServiceWatcher watcher_;
    DBusSignalListener hostRegistered_;
    DBusSignalListener hostUnregistered_;
};

} // namespace tolvo

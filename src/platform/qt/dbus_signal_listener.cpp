#include "platform/qt/dbus_signal_listener.h"

#include <utility>

namespace tolvo {

DBusSignalListener::DBusSignalListener(const QDBusConnection& connection, const QString& service, const QString& path,
                                       const QString& interface, const QString& name,
                                       std::function<void(const QDBusMessage&)> onSignal)
    : connection_(connection),
      service_(service),
      path_(path),
      interface_(interface),
      name_(name),
      onSignal_(std::move(onSignal)) {
    connection_.connect(service_, path_, interface_, name_, this, SLOT(receive(QDBusMessage)));
}

DBusSignalListener::~DBusSignalListener() {
    connection_.disconnect(service_, path_, interface_, name_, this, SLOT(receive(QDBusMessage)));
}

} // namespace tolvo

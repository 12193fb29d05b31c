#include "platform/qt/session_bus.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace tolvo {

namespace {

constexpr Seconds firstRetryDelay(1);
constexpr Seconds longestRetryDelay(30);

/// The bus of the session that we are in; empty when there is none. Asking the library instead would start one.
QString busAddress() {
    if (const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return address;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFileInfo::exists(socket) ? QStringLiteral("unix:path=") + socket : QString();
}

/// Qt keeps connections by name, and a name that was used stays with its broken connection.
QString nextConnectionName() {
    static int count = 0;
    return QStringLiteral("tolvo-session-%1").arg(++count);
}

} // namespace

void SessionBus::connect() {
    retryDelay_ = firstRetryDelay;
    if (!tryToConnect())
        drop();
}

void SessionBus::disconnect() {
    retry_.reset();
    disconnected_.reset();
    if (!connectionName_.isEmpty())
        QDBusConnection::disconnectFromBus(std::exchange(connectionName_, {}));
}

bool SessionBus::tryToConnect() {
    const QString address = busAddress();
    if (address.isEmpty())
        return false;
    const QString name = nextConnectionName();
    const QDBusConnection connection = QDBusConnection::connectToBus(address, name);
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        return false;
    }
    connectionName_ = name;
    retryDelay_ = firstRetryDelay;
    disconnected_ = std::make_unique<DBusSignalListener>(
        connection, QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), [this](const QDBusMessage&) {
            // Not inside the signal, whose listener goes with the connection.
            retry_ = loop_.after(Seconds(0), [this] { drop(); });
        });
    for (const Follower& follower : followers_)
        follower.onConnect(connection);
    return true;
}

void SessionBus::retryLater() {
    retry_ = loop_.after(retryDelay_, [this] {
        if (!tryToConnect())
            retryLater();
    });
    retryDelay_ = std::min(retryDelay_ * 2, longestRetryDelay);
}

void SessionBus::drop() {
    for (const Follower& follower : followers_)
        follower.onDisconnect();
    disconnect();
    retryLater();
}

} // namespace tolvo

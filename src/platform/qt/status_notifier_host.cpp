#include "platform/qt/status_notifier_host.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace tolvo {

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
/// A watcher that is slower than this counts as none until it is heard of again.
constexpr int answerMilliseconds = 2000;

QString itemService() {
    return QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
}

QDBusMessage busCall(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

StatusNotifierHost::StatusNotifierHost(const QDBusConnection& connection, std::function<void(bool)> onChange)
    : connection_(connection),
      onChange_(std::move(onChange)),
      watcher_(watcherService, connection, QDBusServiceWatcher::WatchForOwnerChange),
      hostRegistered_(connection, watcherService, watcherPath, watcherService,
                      QStringLiteral("StatusNotifierHostRegistered"), [this](const QDBusMessage&) { askForHost(); }),
      hostUnregistered_(connection, watcherService, watcherPath, watcherService,
                        QStringLiteral("StatusNotifierHostUnregistered"),
                        [this](const QDBusMessage&) { askForHost(); }) {
    connection_.send(busCall(QStringLiteral("RequestName")) << itemService() << 0U);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) {
                if (newOwner.isEmpty())
                    tell(false);
                else
                    registerItem();
            });
    registerItem();
}

StatusNotifierHost::~StatusNotifierHost() {
    // Giving the name up is what takes the item out of the area.
    connection_.send(busCall(QStringLiteral("ReleaseName")) << itemService());
}

void StatusNotifierHost::registerItem() {
    auto call = QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call << itemService();
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(call, answerMilliseconds), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        if (pending->isError())
            tell(false);
        else
            askForHost();
    });
}

void StatusNotifierHost::askForHost() {
    auto call = QDBusMessage::createMethodCall(
        watcherService, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    auto* pending = new QDBusPendingCallWatcher(connection_.asyncCall(call, answerMilliseconds), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *pending;
        tell(!reply.isError() && reply.value().variant().toBool());
    });
}

void StatusNotifierHost::tell(bool isPresent) {
    if (told_ != isPresent) {
        told_ = isPresent;
        onChange_(isPresent);
    }
}

} // namespace tolvo

#include "platform/qt/running_instance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <utility>

namespace tolvo {

namespace {

const QString instanceService = QStringLiteral("network.tolvo.Tolvo");
const QString instancePath = QStringLiteral("/network/tolvo/Tolvo");
const QString presentMethod = QStringLiteral("Present");
constexpr int answerMilliseconds = 2000;

} // namespace

RunningInstance::RunningInstance(SessionBus& bus) : connection_(QString()) {
    bus.addFollower({[this](const QDBusConnection& connection) { claim(connection); }, [] {}});
}

void RunningInstance::claim(const QDBusConnection& connection) {
    connection_ = connection;
    connection_.registerVirtualObject(instancePath, this);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = connection_.interface()->registerService(
        instanceService, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    const bool isTaken = reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceNotRegistered;
    if (!std::exchange(hasClaimed_, true))
        isFirst_ = !isTaken;
}

void RunningInstance::presentFirst() {
    const auto call = QDBusMessage::createMethodCall(instanceService, instancePath, instanceService, presentMethod);
    connection_.call(call, QDBus::Block, answerMilliseconds);
}

QString RunningInstance::introspect(const QString&) const {
    return QStringLiteral("<interface name=\"network.tolvo.Tolvo\"><method name=\"Present\"/></interface>");
}

bool RunningInstance::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.member() != presentMethod)
        return false;
    connection.send(message.createReply());
    if (onPresent)
        onPresent();
    return true;
}

} // namespace tolvo

#include "platform/qt/status_notifier_object.h"

#include "platform/qt/qt_text.h"
#include "platform/qt/status_notifier_pixmap.h"

#include <QDBusMessage>
#include <QDBusVariant>

namespace tolvo {

namespace {

const QString objectPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

constexpr auto interfaceDescription = R"xml(<interface name="org.kde.StatusNotifierItem">
<property name="Category" type="s" access="read"/><property name="Id" type="s" access="read"/>
<property name="Title" type="s" access="read"/><property name="Status" type="s" access="read"/>
<property name="WindowId" type="i" access="read"/><property name="IconName" type="s" access="read"/>
<property name="IconPixmap" type="a(iiay)" access="read"/><property name="OverlayIconName" type="s" access="read"/>
<property name="AttentionIconName" type="s" access="read"/><property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
<property name="ItemIsMenu" type="b" access="read"/>
<method name="Activate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="SecondaryActivate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="ContextMenu"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="ProvideXdgActivationToken"><arg name="token" type="s" direction="in"/></method>
<method name="Scroll"><arg name="delta" type="i" direction="in"/><arg name="orientation" type="s" direction="in"/></method>
<signal name="NewIcon"/><signal name="NewToolTip"/>
</interface>)xml";

QDBusMessage unknown(const QDBusMessage& message) {
    return message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("No such method or arguments"));
}

} // namespace

StatusNotifierObject::StatusNotifierObject() : connection_(QString()) {
    registerStatusNotifierTypes();
}

void StatusNotifierObject::setImage(const ScaledImage& image) {
    if (image == image_)
        return;
    image_ = image;
    emitSignal(QStringLiteral("NewIcon"));
}

void StatusNotifierObject::setToolTip(const std::string& text) {
    toolTip_ = toQString(text);
    emitSignal(QStringLiteral("NewToolTip"));
}

void StatusNotifierObject::exportOn(const QDBusConnection& connection) {
    connection_ = connection;
    connection_.registerVirtualObject(objectPath, this);
}

void StatusNotifierObject::withdraw() {
    connection_.unregisterObject(objectPath);
    connection_ = QDBusConnection(QString());
}

void StatusNotifierObject::emitSignal(const QString& name) {
    if (connection_.isConnected())
        connection_.send(QDBusMessage::createSignal(objectPath, itemInterface, name));
}

QString StatusNotifierObject::introspect(const QString&) const {
    return QString::fromLatin1(interfaceDescription);
}

bool StatusNotifierObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() == QStringLiteral("org.freedesktop.DBus.Introspectable"))
        return false; // Qt answers with introspect().
    const QDBusMessage answer =
        message.interface() == propertiesInterface ? replyToProperties(message) : reply(message);
    connection.send(answer);
    return true;
}

QDBusMessage StatusNotifierObject::reply(const QDBusMessage& message) {
    const QList<QVariant> arguments = message.arguments();
    const QString member = message.member();
    if (message.signature() == QStringLiteral("ii") && message.path() == objectPath) {
        const QPoint place(arguments[0].toInt(), arguments[1].toInt());
        if ((member == QStringLiteral("Activate") || member == QStringLiteral("ContextMenu")) && onActivate)
            onActivate(place);
        else if (member != QStringLiteral("SecondaryActivate"))
            return unknown(message);
        return message.createReply();
    }
    if (member == QStringLiteral("ProvideXdgActivationToken") && message.signature() == QStringLiteral("s")) {
        if (onActivationToken)
            onActivationToken(arguments[0].toString());
        return message.createReply();
    }
    return member == QStringLiteral("Scroll") ? message.createReply() : unknown(message);
}

QDBusMessage StatusNotifierObject::replyToProperties(const QDBusMessage& message) const {
    const QList<QVariant> arguments = message.arguments();
    if (message.member() == QStringLiteral("GetAll"))
        return message.createReply(QVariant(properties()));
    if (message.member() == QStringLiteral("Get") && message.signature() == QStringLiteral("ss")) {
        const QVariant value = properties().value(arguments[1].toString());
        if (value.isValid())
            return message.createReply(QVariant::fromValue(QDBusVariant(value)));
    }
    return message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such property"));
}

QVariantMap StatusNotifierObject::properties() const {
    return {
        {QStringLiteral("Category"), QStringLiteral("SystemServices")},
        {QStringLiteral("Id"), QStringLiteral("tolvo")},
        {QStringLiteral("Title"), QStringLiteral("Tolvo")},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        {QStringLiteral("IconName"), QString()},
        {QStringLiteral("IconPixmap"), QVariant::fromValue(statusNotifierPixmaps(image_))},
        {QStringLiteral("OverlayIconName"), QString()},
        {QStringLiteral("AttentionIconName"), QString()},
        {QStringLiteral("ToolTip"), QVariant::fromValue(StatusNotifierToolTip{toolTip_})},
        {QStringLiteral("ItemIsMenu"), false},
    };
}

} // namespace tolvo

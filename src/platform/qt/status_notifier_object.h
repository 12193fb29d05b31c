#pragma once

#include "platform/services/raster_image.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QPoint>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <string>

namespace tolvo {

/// The item as other programs see it: org.kde.StatusNotifierItem at /StatusNotifierItem. Calls that it doesn't know are
/// answered with an error.
class StatusNotifierObject final : public QDBusVirtualObject {
public:
    StatusNotifierObject();

    /// The click's place in the host's pixels.
    std::function<void(QPoint)> onActivate;
    /// The right to take the keyboard, where the desktop hands it on by token; before the click that it belongs to.
    std::function<void(const QString& token)> onActivationToken;

    void setImage(const ScaledImage& image);
    void setToolTip(const std::string& text);
    void exportOn(const QDBusConnection& connection);
    void withdraw();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QVariantMap properties() const;
    QDBusMessage reply(const QDBusMessage& message);
    QDBusMessage replyToProperties(const QDBusMessage& message) const;
    void emitSignal(const QString& name);

    QDBusConnection connection_;
    ScaledImage image_;
    QString toolTip_;
};

} // namespace tolvo

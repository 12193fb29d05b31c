#pragma once

#include "platform/services/raster_image.h"

#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QString>

class QDBusArgument;

namespace tolvo {

/// A picture as the protocol wants it: (iiay), each pixel as four bytes in network order.
struct StatusNotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};
using StatusNotifierPixmaps = QList<StatusNotifierPixmap>;

/// (sa(iiay)ss)
struct StatusNotifierToolTip {
    QString title;
};

StatusNotifierPixmaps statusNotifierPixmaps(const ScaledImage& image);
/// Once, before such a value is sent.
void registerStatusNotifierTypes();

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip);

} // namespace tolvo

Q_DECLARE_METATYPE(tolvo::StatusNotifierPixmap)
Q_DECLARE_METATYPE(tolvo::StatusNotifierToolTip)

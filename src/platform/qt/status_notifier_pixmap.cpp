#include "platform/qt/status_notifier_pixmap.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QtEndian>

namespace tolvo {

namespace {

StatusNotifierPixmap statusNotifierPixmap(const RasterImage& image) {
    StatusNotifierPixmap pixmap{image.width, image.height, {}};
    const auto count = static_cast<qsizetype>(image.pixels.size());
    pixmap.bytes.resize(count * static_cast<qsizetype>(sizeof(std::uint32_t)));
    qToBigEndian<std::uint32_t>(image.pixels.data(), count, pixmap.bytes.data());
    return pixmap;
}

} // namespace

StatusNotifierPixmaps statusNotifierPixmaps(const ScaledImage& image) {
    StatusNotifierPixmaps pixmaps;
    for (const RasterImage& one : image)
        pixmaps.append(statusNotifierPixmap(one));
    return pixmaps;
}

void registerStatusNotifierTypes() {
    qDBusRegisterMetaType<StatusNotifierPixmap>();
    qDBusRegisterMetaType<StatusNotifierPixmaps>();
    qDBusRegisterMetaType<StatusNotifierToolTip>();
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the form that the library asks for.
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip) {
    argument.beginStructure();
    argument << QString() << StatusNotifierPixmaps() << toolTip.title << QString();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip) {
    QString ignored;
    StatusNotifierPixmaps pixmaps;
    argument.beginStructure();
    argument >> ignored >> pixmaps >> toolTip.title >> ignored;
    argument.endStructure();
    return argument;
}

// NOLINTEND(bugprone-return-const-ref-from-parameter)

} // namespace tolvo

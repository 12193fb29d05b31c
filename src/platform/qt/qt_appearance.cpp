#include "platform/qt/qt_appearance.h"

#include <QApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>

namespace tolvo {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceNamespace = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

/// What the portal's key says.
constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;

QPalette paletteOf(ColorScheme scheme) {
    const bool isDark = scheme == ColorScheme::Dark;
    const QColor text = isDark ? QColor(0xF2F4F7) : QColor(0x1B2027);
    QPalette palette;
    palette.setColor(QPalette::Window, isDark ? QColor(0x1D2127) : QColor(0xF3F5F8));
    palette.setColor(QPalette::Base, isDark ? QColor(0x282D35) : QColor(0xFFFFFF));
    palette.setColor(QPalette::AlternateBase, isDark ? QColor(0x232830) : QColor(0xF8F9FB));
    palette.setColor(QPalette::Button, isDark ? QColor(0x333A44) : QColor(0xE6EAF0));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::PlaceholderText, isDark ? QColor(0x9BA4B0) : QColor(0x5F6975));
    palette.setColor(QPalette::Highlight, isDark ? QColor(0x2474E5) : QColor(0x1769E0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, isDark ? QColor(0x343B45) : QColor(0xFFFFFF));
    return palette;
}

QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

QtAppearance::QtAppearance(SessionBus& bus, std::optional<ColorScheme> fixedScheme)
    : systemScheme_(QApplication::palette().color(QPalette::Window).lightnessF() < 0.5F ? ColorScheme::Dark
                                                                                        : ColorScheme::Light),
      colorScheme_(systemScheme_) {
    apply(fixedScheme.value_or(systemScheme_));
    if (!fixedScheme)
        bus.addFollower(
            {[this](const QDBusConnection& connection) { follow(connection); }, [this] { changes_.reset(); }});
}

std::optional<ColorScheme> QtAppearance::panelColorScheme() const {
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    for (const auto* dark : {"GNOME", "Unity", "Pantheon", "X-Cinnamon"}) {
        if (desktops.contains(QLatin1String(dark)))
            return ColorScheme::Dark;
    }
    return desktops.contains(QLatin1String("KDE")) ? std::optional(colorScheme_) : std::nullopt;
}

void QtAppearance::follow(const QDBusConnection& connection) {
    changes_ = std::make_unique<DBusSignalListener>(
        connection, portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"),
        [this](const QDBusMessage& message) {
            const QVariantList values = message.arguments();
            if (values.size() == 3 && values[0] == appearanceNamespace && values[1] == colorSchemeKey)
                take(values[2]);
        });
    auto read = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    read << appearanceNamespace << colorSchemeKey;
    auto* pending = new QDBusPendingCallWatcher(connection.asyncCall(read), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *pending;
        if (!reply.isError())
            take(QVariant::fromValue(reply.value()));
    });
}

void QtAppearance::take(const QVariant& portalValue) {
    const uint preference = unwrapped(portalValue).toUInt();
    const ColorScheme scheme = preference == prefersDark    ? ColorScheme::Dark
                               : preference == prefersLight ? ColorScheme::Light
                                                            : systemScheme_;
    if (scheme == colorScheme_)
        return;
    apply(scheme);
    if (onChange)
        onChange();
}

void QtAppearance::apply(ColorScheme scheme) {
    colorScheme_ = scheme;
    QApplication::setPalette(paletteOf(scheme));
}

} // namespace tolvo

#pragma once

#include "platform/qt/dbus_signal_listener.h"
#include "platform/qt/session_bus.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace tolvo {

enum class ColorScheme { Light, Dark };

/// Whether the user wants light or dark programs: as the desktop's portal says, else as the toolkit's theme looks. It
/// gives the application its palette. Main thread only.
class QtAppearance final : public QObject {
public:
    /// Before the bus is connected. A fixed scheme is kept whatever the desktop says.
    explicit QtAppearance(SessionBus& bus, std::optional<ColorScheme> fixedScheme = std::nullopt);

    /// After the palette has changed.
    std::function<void()> onChange;

    ColorScheme colorScheme() const { return colorScheme_; }
    /// The desktop's panel, which on several desktops is dark whatever programs look like; nothing where only the
    /// user's theme knows.
    std::optional<ColorScheme> panelColorScheme() const;

private:
    void follow(const QDBusConnection& connection);
    void take(const QVariant& portalValue);
    void apply(ColorScheme scheme);

    ColorScheme systemScheme_;
    ColorScheme colorScheme_;
    std::unique_ptr<DBusSignalListener> changes_;
};

} // namespace tolvo

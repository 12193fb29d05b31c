#pragma once

#include "platform/qt/session_bus.h"
#include "platform/qt/status_notifier_host.h"
#include "platform/qt/status_notifier_object.h"
#include "platform/qt/x11_root_events.h"
#include "platform/services/status_item.h"

#include <QSystemTrayIcon>

#include <memory>
#include <optional>

namespace tolvo {

/// The status item on a Linux desktop: in an area that speaks the StatusNotifierItem protocol on D-Bus, or, where there
/// is none, in one of the older XEmbed kind. Qt's own class serves the latter only: on D-Bus it drops the click's place
/// and finds no area that appears after the program's start.
class QtStatusItem final : public StatusItem {
public:
    /// How long an area may take to appear after install() before there counts as none: at login all start at once.
    static constexpr Seconds usualPatience{2};

    /// The bus is connected after this; rootEvents may be null: no X server.
    QtStatusItem(MainLoop& loop, SessionBus& bus, X11RootEvents* rootEvents, Seconds patience = usualPatience);
    ~QtStatusItem() override;

    void install() override;
    void remove() override;
    void setImage(const ScaledImage& image) override;
    void setToolTip(const std::string& text) override;

private:
    void follow(SessionBus& bus);
    void enterArea();
    void setNotifierPresence(bool isPresent);
    void chooseHost();
    void showEmbedded();
    void activate(const ScreenRect& place);

    MainLoop& loop_;
    X11RootEvents* rootEvents_;
    Seconds patience_;
    std::optional<QDBusConnection> connection_;
    bool isInstalled_ = false;
    /// Unknown until the bus has answered.
    std::optional<bool> isNotifierPresent_;
    std::optional<bool> toldHosted_;
    ScaledImage image_;
    QString toolTip_;
    StatusNotifierObject notifier_;
    std::unique_ptr<StatusNotifierHost> notifierHost_;
    std::unique_ptr<QSystemTrayIcon> embedded_;
    LoopRegistration telling_;
    LoopRegistration embedding_;
};

} // namespace tolvo

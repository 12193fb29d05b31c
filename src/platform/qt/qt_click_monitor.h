#pragma once

#include "platform/qt/qt_popover.h"
#include "platform/qt/x11_root_events.h"
#include "platform/services/click_monitor.h"

#include <QObject>

#include <functional>

class QWindow;

namespace tolvo {

/// Clicks outside: on X11 the pointer's own events. On Wayland, where a program can't see them, the loss of the
/// keyboard stands for them. One monitor of each kind at a time.
class QtClickMonitor final : public QObject, public ClickMonitor {
public:
    /// rootEvents is null where there is no X server.
    QtClickMonitor(MainLoop& loop, X11RootEvents* rootEvents, const QtPopover& popover);

    LoopRegistration addGlobalMonitor(std::function<void()> onMouseDown) override;
    LoopRegistration addLocalMonitor(std::function<void(ClickedWindow)> onMouseDown) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buttonMoved(X11RootEvents::ButtonMotion motion);
    void hold();
    void tell();
    ClickedWindow clickedWindow(const QWindow& window) const;

    MainLoop& loop_;
    X11RootEvents* rootEvents_;
    const QtPopover& popover_;
    std::function<void()> onGlobal_;
    std::function<void(ClickedWindow)> onLocal_;
    bool isButtonDown_ = false;
    bool isHoldOver_ = false;
    LoopRegistration held_;
};

} // namespace tolvo

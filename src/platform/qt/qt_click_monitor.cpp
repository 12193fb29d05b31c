#include "platform/qt/qt_click_monitor.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace tolvo {

namespace {

/// A click on the status item reaches us by way of the program that draws it: within this time after it went down, and
/// no earlier than the button's release.
constexpr Seconds holdAfterPress(0.25);
constexpr Seconds holdAfterRelease(0.1);

bool isWatchedButton(const QMouseEvent& event) {
    return event.button() == Qt::LeftButton || event.button() == Qt::RightButton;
}

} // namespace

QtClickMonitor::QtClickMonitor(MainLoop& loop, X11RootEvents* rootEvents, const QtPopover& popover)
    : loop_(loop), rootEvents_(rootEvents), popover_(popover) {
    if (rootEvents_ == nullptr)
        connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* focused) {
            held_.reset();
            if (focused == nullptr && onGlobal_)
                hold();
        });
}

LoopRegistration QtClickMonitor::addGlobalMonitor(std::function<void()> onMouseDown) {
    onGlobal_ = std::move(onMouseDown);
    isButtonDown_ = false;
    if (rootEvents_ != nullptr) {
        rootEvents_->onButton = [this](X11RootEvents::ButtonMotion motion) { buttonMoved(motion); };
        rootEvents_->watchButtons(true);
    }
    return LoopRegistration([this] {
        held_.reset();
        onGlobal_ = nullptr;
        if (rootEvents_ != nullptr) {
            rootEvents_->watchButtons(false);
            rootEvents_->onButton = nullptr;
        }
    });
}

LoopRegistration QtClickMonitor::addLocalMonitor(std::function<void(ClickedWindow)> onMouseDown) {
    onLocal_ = std::move(onMouseDown);
    QCoreApplication::instance()->installEventFilter(this);
    return LoopRegistration([this] {
        QCoreApplication::instance()->removeEventFilter(this);
        onLocal_ = nullptr;
    });
}

void QtClickMonitor::buttonMoved(X11RootEvents::ButtonMotion motion) {
    isButtonDown_ = motion == X11RootEvents::ButtonMotion::Down;
    if (isButtonDown_) {
        // Ours are the local monitor's; they come by another connection, so either may be first.
        if (QGuiApplication::topLevelAt(QCursor::pos()) == nullptr)
            hold();
    } else if (isHoldOver_) {
        held_ = loop_.after(holdAfterRelease, [this] { tell(); });
    }
}

void QtClickMonitor::hold() {
    isHoldOver_ = false;
    held_ = loop_.after(holdAfterPress, [this] {
        isHoldOver_ = isButtonDown_;
        if (!isHoldOver_)
            tell();
    });
}

void QtClickMonitor::tell() {
    isHoldOver_ = false;
    // The monitor may be taken away by what it leads to.
    if (const auto onGlobal = onGlobal_)
        onGlobal();
}

ClickedWindow QtClickMonitor::clickedWindow(const QWindow& window) const {
    if (popover_.isOwnWindow(&window))
        return ClickedWindow::Popover;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const bool isStatusItem = std::ranges::any_of(widgets, [&](const QWidget* widget) {
        return widget->windowHandle() == &window && widget->inherits("QSystemTrayIconSys");
    });
    return isStatusItem ? ClickedWindow::StatusItem : ClickedWindow::Other;
}

bool QtClickMonitor::eventFilter(QObject* watched, QEvent* event) {
    // Each press is seen by the window first, and by its widgets after that.
    if (event->type() != QEvent::MouseButtonPress || !watched->isWindowType() || !onLocal_)
        return false;
    if (!isWatchedButton(*static_cast<QMouseEvent*>(event)))
        return false;
    held_.reset();
    const auto onLocal = onLocal_;
    onLocal(clickedWindow(*static_cast<QWindow*>(watched)));
    return false;
}

} // namespace tolvo

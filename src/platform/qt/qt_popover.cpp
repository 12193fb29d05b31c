#include "platform/qt/qt_popover.h"

#include "platform/qt/qt_geometry.h"
#include "platform/qt/window_placement.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace tolvo {

namespace {

constexpr double cornerRadius = 12;

constexpr Qt::WindowFlags popoverFlags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
constexpr Qt::WindowFlags ordinaryFlags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                                          Qt::WindowMinimizeButtonHint;

/// What the desktop's frame takes of the height, about.
constexpr double titleBarHeight = 40;

/// The free area of the screen that the point is on.
ScreenRect workAreaAt(const QPoint& point) {
    const QScreen* screen = QGuiApplication::screenAt(point);
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    // Without any there is nothing to be seen, nor to be limited by.
    return screen != nullptr ? toScreenRect(screen->availableGeometry()) : ScreenRect{0, 0, 4096, 4096};
}

} // namespace

class QtPopover::Window final : public QWidget {
public:
    explicit Window(std::function<void()> onClose) : onClose_(std::move(onClose)) {
        setAttribute(Qt::WA_TranslucentBackground);
        setWindowTitle(QStringLiteral("Tolvo"));
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
    }

    /// Smooth where the desktop mixes windows, cut out where it doesn't.
    void setCorners(bool isRounded, bool hasCompositor) {
        isRounded_ = isRounded;
        if (isRounded && !hasCompositor)
            setMask(QRegion(outline().toFillPolygon().toPolygon()));
        else
            clearMask();
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (!isRounded_) {
            painter.fillRect(rect(), palette().window());
            return;
        }
        QColor border = palette().color(QPalette::WindowText);
        border.setAlphaF(0.18F);
        painter.fillPath(outline(), palette().window());
        painter.setPen(border);
        painter.drawPath(outline());
    }

    void hideEvent(QHideEvent* event) override {
        QWidget::hideEvent(event);
        if (!event->spontaneous())
            onClose_();
    }

private:
    QPainterPath outline() const {
        QPainterPath path;
        path.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
        return path;
    }

    std::function<void()> onClose_;
    bool isRounded_ = true;
};

QtPopover::QtPopover(X11RootEvents* rootEvents, std::function<std::unique_ptr<QWidget>()> makeContent)
    : rootEvents_(rootEvents), makeContent_(std::move(makeContent)) {}

QtPopover::~QtPopover() = default;

void QtPopover::build() {
    window_ = std::make_unique<Window>([this] {
        if (onDidClose)
            onDidClose();
    });
    window_->layout()->addWidget(makeContent_().release());
}

void QtPopover::show(std::optional<ScreenRect> place) {
    place_ = place;
    if (!window_)
        build();
    const Qt::WindowFlags flags = place ? popoverFlags : ordinaryFlags;
    if (window_->windowFlags() != flags) {
        // The native window keeps its shape, which can't be changed any more once the flags have.
        window_->clearMask();
        window_->setWindowFlags(flags);
    }
    takePlace();
    window_->show();
    orderFront();
}

void QtPopover::orderFront() {
    window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    window_->raise();
    window_->activateWindow();
}

void QtPopover::takePlace() {
    const ScreenRect workArea = workAreaAt(place_ ? toQRect(*place_).center() : window_->pos());
    if (place_) {
        const QRect frame = toQRect(popoverFrame(*place_, contentSize_, workArea));
        window_->setFixedSize(frame.size());
        window_->move(frame.topLeft());
    } else {
        window_->setFixedSize(
            toQSize({contentSize_.width, std::min(contentSize_.height, workArea.height - titleBarHeight)}));
    }
    window_->setCorners(place_.has_value(), rootEvents_ == nullptr || rootEvents_->hasCompositor());
}

void QtPopover::close() {
    if (window_)
        window_->hide();
}

bool QtPopover::isShown() const {
    return window_ && window_->isVisible();
}

void QtPopover::setContentSize(ContentSize size) {
    contentSize_ = size;
    if (window_)
        takePlace();
}

bool QtPopover::isOwnWindow(const QWindow* window) const {
    const QWindow* own = window_ ? window_->windowHandle() : nullptr;
    for (; window != nullptr; window = window->transientParent()) {
        if (window == own)
            return true;
    }
    return false;
}

} // namespace tolvo

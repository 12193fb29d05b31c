#include "platform/qt/qt_status_item.h"

#include "platform/qt/qt_geometry.h"
#include "platform/qt/qt_text.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <utility>

namespace tolvo {

namespace {

/// A panel that starts may speak the older protocol a moment before the newer one. Qt's class asks the bus once for all
/// which of them is spoken, and must not be made in between: it would never embed itself again.
constexpr Seconds embeddingDelay(1);

/// Other programs speak of the X server's pixels, Qt of points: a screen starts at the same place in both.
QPointF pointsFromPixels(QPoint pixels) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect points = screen->geometry();
        const QRect covered(points.topLeft(), points.size() * screen->devicePixelRatio());
        if (covered.contains(pixels))
            return points.topLeft() + QPointF(pixels - points.topLeft()) / screen->devicePixelRatio();
    }
    return pixels;
}

QIcon iconFrom(const ScaledImage& image) {
    QIcon icon;
    for (const RasterImage& one : image) {
        const QImage view(reinterpret_cast<const uchar*>(one.pixels.data()), one.width, one.height,
                          QImage::Format_ARGB32);
        icon.addPixmap(QPixmap::fromImage(view.copy()));
    }
    return icon;
}

} // namespace

QtStatusItem::QtStatusItem(MainLoop& loop, SessionBus& bus, X11RootEvents* rootEvents, Seconds patience)
    : loop_(loop), rootEvents_(rootEvents), patience_(patience) {
    notifier_.onActivate = [this](QPoint pixels) {
        const QPointF place = pointsFromPixels(pixels);
        activate({place.x(), place.y(), 0, 0});
    };
    notifier_.onActivationToken = [](const QString& token) { qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8()); };
    follow(bus);
}

QtStatusItem::~QtStatusItem() {
    remove();
}

void QtStatusItem::follow(SessionBus& bus) {
    bus.addFollower({[this](const QDBusConnection& connection) {
                         connection_ = connection;
                         if (isInstalled_)
                             enterArea();
                     },
                     [this] {
                         connection_.reset();
                         notifierHost_.reset();
                         setNotifierPresence(false);
                     }});
}

void QtStatusItem::install() {
    if (std::exchange(isInstalled_, true))
        return;
    if (rootEvents_ != nullptr)
        rootEvents_->onTrayManagerChange = [this] { chooseHost(); };
    if (connection_)
        enterArea();
    else
        chooseHost();
}

void QtStatusItem::enterArea() {
    notifier_.exportOn(*connection_);
    notifierHost_ =
        std::make_unique<StatusNotifierHost>(*connection_, [this](bool isPresent) { setNotifierPresence(isPresent); });
}

void QtStatusItem::remove() {
    if (!std::exchange(isInstalled_, false))
        return;
    if (rootEvents_ != nullptr)
        rootEvents_->onTrayManagerChange = nullptr;
    telling_.reset();
    embedding_.reset();
    embedded_.reset();
    notifierHost_.reset();
    notifier_.withdraw();
    isNotifierPresent_.reset();
    toldHosted_.reset();
}

void QtStatusItem::setImage(const ScaledImage& image) {
    image_ = image;
    notifier_.setImage(image);
    if (embedded_)
        embedded_->setIcon(iconFrom(image));
}

void QtStatusItem::setToolTip(const std::string& text) {
    toolTip_ = toQString(text);
    notifier_.setToolTip(text);
    if (embedded_)
        embedded_->setToolTip(toolTip_);
}

void QtStatusItem::setNotifierPresence(bool isPresent) {
    isNotifierPresent_ = isPresent;
    chooseHost();
}

void QtStatusItem::chooseHost() {
    if (!isInstalled_ || !isNotifierPresent_)
        return;
    const bool isEmbeddable = rootEvents_ != nullptr && rootEvents_->hasTrayManager();
    if (*isNotifierPresent_ || !isEmbeddable) {
        embedding_.reset();
        embedded_.reset();
    } else if (!embedded_) {
        embedding_ = loop_.after(embeddingDelay, [this] { showEmbedded(); });
    }
    const bool isHosted = *isNotifierPresent_ || isEmbeddable;
    const bool isFirstMiss = !isHosted && !toldHosted_;
    // Through the loop, so that nobody is told inside install().
    telling_ = loop_.after(isFirstMiss ? patience_ : Seconds(0), [this, isHosted] {
        if (std::exchange(toldHosted_, isHosted) != isHosted && onHostChange)
            onHostChange(isHosted);
    });
}

void QtStatusItem::showEmbedded() {
    embedded_ = std::make_unique<QSystemTrayIcon>(iconFrom(image_));
    embedded_->setToolTip(toolTip_);
    QObject::connect(embedded_.get(), &QSystemTrayIcon::activated, embedded_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason != QSystemTrayIcon::Trigger && reason != QSystemTrayIcon::Context)
                             return;
                         const QRect icon = embedded_->geometry();
                         activate(toScreenRect(icon.isValid() ? icon : QRect(QCursor::pos(), QSize(0, 0))));
                     });
    embedded_->show();
}

void QtStatusItem::activate(const ScreenRect& place) {
    if (onActivate)
        onActivate(place);
}

} // namespace tolvo

#include "presentation/wifi_radar/radar_face_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"

#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tolvo {

namespace {

constexpr double usualFramesPerSecond = 60;

int frameMilliseconds(const QScreen* screen) {
    const double framesPerSecond = screen == nullptr ? usualFramesPerSecond : screen->refreshRate();
    return static_cast<int>(std::lround(1000 / std::clamp(framesPerSecond, 24.0, 240.0)));
}

} // namespace

RadarFaceView::RadarFaceView(std::function<double()> sweepDegrees, QWidget* parent)
    : QLabel(parent), sweepDegrees_(std::move(sweepDegrees)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(toQString(wifi_radar::faceLabel));
    frames_.setTimerType(Qt::PreciseTimer);
    connect(&frames_, &QTimer::timeout, this, [this] { update(); });
}

void RadarFaceView::show(const WiFiRadarContent& content) {
    RadarCentre centre{content.scoreSymbolName, std::to_string(content.score), content.coverageMessage,
                       content.scoreColor};
    if (centre == centre_)
        return;
    centre_ = std::move(centre);
    centrePicture_ = {};
    setAccessibleDescription(toQString(centre_.score + ". " + centre_.coverageMessage));
    update();
}

void RadarFaceView::showEvent(QShowEvent* event) {
    QLabel::showEvent(event);
    frames_.start(frameMilliseconds(screen()));
}

void RadarFaceView::hideEvent(QHideEvent* event) {
    QLabel::hideEvent(event);
    frames_.stop();
}

void RadarFaceView::keepLayers() {
    RadarFaceLook look{size(), devicePixelRatioF(), palette().color(QPalette::Window), font()};
    if (look != look_) {
        look_ = std::move(look);
        ground_ = radarGround(look_);
        centrePicture_ = {};
    }
    if (centrePicture_.isNull())
        centrePicture_ = radarCentrePicture(look_, centre_);
}

void RadarFaceView::paintEvent(QPaintEvent*) {
    keepLayers();
    QPainter painter(this);
    painter.drawPixmap(QPoint(), ground_);
    paintRadarSweep(painter, radarDisc(size()), sweepDegrees_(), toneColor(centre_.color, darkGroundPalette()));
    painter.drawPixmap(radarCentreRect(size()).topLeft(), centrePicture_);
}

} // namespace tolvo

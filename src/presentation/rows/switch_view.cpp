#include "presentation/rows/switch_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int trackWidth = 38;
constexpr int trackHeight = 22;
constexpr double knobMargin = 2;
constexpr int slidingMilliseconds = 140;

QColor between(const QColor& from, const QColor& to, double share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

} // namespace

SwitchView::SwitchView(std::string_view accessibilityLabel, QWidget* parent) : QCheckBox(parent), knob_(this) {
    setAccessibleName(toQString(accessibilityLabel));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    knob_.setDuration(slidingMilliseconds);
    knob_.setStartValue(0.0);
    knob_.setEndValue(1.0);
    connect(&knob_, &QVariantAnimation::valueChanged, this, [this] { update(); });
    // Assistive programs set the state without a click: taken as the same request.
    connect(this, &QCheckBox::toggled, this, [this](bool isChecked) {
        if (isChecked == isOn_)
            return;
        onToggle(isChecked);
        setChecked(isOn_);
    });
}

QSize SwitchView::sizeHint() const {
    return {trackWidth, trackHeight};
}

void SwitchView::show(bool isOn) {
    if (isOn == isOn_)
        return;
    isOn_ = isOn;
    setChecked(isOn);
    knob_.setDirection(isOn ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
    const bool isAnimated = isVisible() && style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
    if (isAnimated && knob_.state() != QAbstractAnimation::Running)
        knob_.start();
    else
        knob_.setCurrentTime(isOn ? slidingMilliseconds : 0);
    update();
}

void SwitchView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QCheckBox::keyPressEvent(event);
}

void SwitchView::paintEvent(QPaintEvent*) {
    const double share = knob_.currentValue().toDouble();
    const QRectF track(0, (height() - trackHeight) / 2.0, trackWidth, trackHeight);
    const double radius = trackHeight / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QColor off = isDark(palette()) ? QColor(0x59626E) : QColor(0xB9C1CB);
    painter.setBrush(between(off, toneColor(Tone::Green, palette()), share));
    painter.drawRoundedRect(track, radius, radius);
    const double travel = trackWidth - trackHeight;
    const double x = layoutDirection() == Qt::RightToLeft ? travel * (1 - share) : travel * share;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(track.left() + x, track.top(), trackHeight, trackHeight)
                            .adjusted(knobMargin, knobMargin, -knobMargin, -knobMargin));
    if (hasFocus())
        paintFocusRing(painter, track, radius, palette().color(QPalette::Highlight));
}

} // namespace tolvo

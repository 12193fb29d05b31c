#include "presentation/dashboard/network_header_row_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/dashboard/dashboard_frame_content.h"
#include "presentation/rows/icon_button_view.h"
#include "presentation/rows/name_label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace tolvo {

namespace {

constexpr int symbolSize = 18;
constexpr int detailsSymbolSize = 15;
constexpr double disconnectedOpacity = 0.45;

/// A few words on a ground above the others.
class Bubble final : public QLabel {
public:
    explicit Bubble(QWidget* parent) : QLabel(parent) {
        setTextFormat(Qt::PlainText);
        setContentsMargins(10, 6, 10, 6);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(withOpacity(toneColor(Tone::Primary, palette()), 0.25));
        painter.setBrush(palette().button());
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), controlRadius, controlRadius);
        QLabel::paintEvent(event);
    }
};

} // namespace

class NetworkHeaderRowView::SignalSymbol final : public QWidget {
public:
    explicit SignalSymbol(QWidget* parent) : QWidget(parent) { setFixedSize(symbolSize, symbolSize); }

    void show(bool isConnected) {
        isConnected_ = isConnected;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QColor white = withOpacity(toneColor(Tone::White, palette()), disconnectedOpacity);
        drawSymbol(painter, dashboardFrameContent.networkSymbolName, rect(),
                   isConnected_ ? toneColor(Tone::Green, palette()) : white);
    }

private:
    bool isConnected_ = false;
};

NetworkHeaderRowView::NetworkHeaderRowView(QWidget* parent)
    : QWidget(parent),
      symbol_(new SignalSymbol(this)),
      name_(new NameLabelView(this)),
      band_(new QLabel(this)),
      details_(new IconButtonView(dashboardFrameContent.channelSymbolName, dashboardFrameContent.channelButtonLabel,
                                  dashboardFrameContent.channelButtonLabel, this)),
      channel_(new Bubble(this)) {
    name_->setFont(textFont(TextStyle::Headline, *this));
    band_->setFont(textFont(TextStyle::Caption, *this));
    band_->setForegroundRole(QPalette::PlaceholderText);
    details_->setSymbolSize(detailsSymbolSize);
    // As high without a band as with one.
    setMinimumHeight(details_->sizeHint().height());
    channel_->hide();
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(spacing::item);
    line->addWidget(symbol_);
    line->addWidget(name_, 1);
    line->addWidget(band_);
    line->addWidget(details_);
    QObject::connect(details_, &QPushButton::clicked, this, [this] { toggleChannel(); });
}

void NetworkHeaderRowView::toggleChannel() {
    // Over the card's other rows, and scrolling with them.
    channel_->setParent(parentWidget());
    channel_->adjustSize();
    const QRect button(details_->mapTo(parentWidget(), QPoint()), details_->size());
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    channel_->move(isMirrored ? button.left() : button.right() - channel_->width(), button.bottom() + 2);
    channel_->setVisible(channel_->isHidden());
    channel_->raise();
}

void NetworkHeaderRowView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && channel_->isVisible())
        channel_->hide();
    else
        QWidget::keyPressEvent(event);
}

void NetworkHeaderRowView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    channel_->hide();
}

void NetworkHeaderRowView::show(const WiFiNetworkHeader& header) {
    symbol_->show(header.isConnected);
    name_->show(header.name);
    band_->setText(toQString(header.band.value_or("")));
    band_->setVisible(header.band.has_value());
    details_->setVisible(header.band.has_value());
    channel_->setText(toQString(header.channelLine));
    channel_->adjustSize();
    if (!header.band)
        channel_->hide();
}

} // namespace tolvo

#include "presentation/diagnostics_export/diagnostics_share_preview_card_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/metric_row_view.h"
#include "presentation/rows/style_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace tolvo {

namespace {

constexpr std::size_t metricCount = 7;
constexpr double capsuleOpacity = 0.95;

/// A hairline across the card.
QWidget* makeDivider(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Button);
    return line;
}

} // namespace

/// A state in black on its colour.
class HealthCapsuleView final : public QLabel {
public:
    explicit HealthCapsuleView(QWidget* parent) : QLabel(parent) {
        QFont font = textFont(TextStyle::Caption, *this);
        font.setWeight(QFont::Bold);
        setFont(font);
        setContentsMargins(10, 3, 10, 3);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    void show(const Badge& badge) {
        setText(toQString(badge.text));
        tone_ = badge.tone;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        // The bright shades, on which black can be read.
        painter.setBrush(withOpacity(toneColor(tone_, darkGroundPalette()), capsuleOpacity));
        painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
        painter.setPen(Qt::black);
        painter.drawText(rect(), Qt::AlignCenter, text());
    }

private:
    Tone tone_ = Tone::Gray;
};

DiagnosticsSharePreviewCardView::DiagnosticsSharePreviewCardView(QWidget* parent)
    : CardView("", parent),
      name_(makeWrappedLabel("", TextStyle::Title, this)),
      subtitle_(makeWrappedLabel("", TextStyle::Caption, this, QPalette::PlaceholderText)),
      capsule_(new HealthCapsuleView(this)),
      footer_(makeWrappedLabel("", TextStyle::Caption, this, QPalette::PlaceholderText)) {
    auto* names = new QVBoxLayout;
    names->setSpacing(1);
    names->addWidget(name_);
    names->addWidget(subtitle_);
    auto* head = new QHBoxLayout;
    head->addLayout(names, 1);
    head->addWidget(capsule_, 0, Qt::AlignTop);
    rows().addSpacing(4);
    rows().addLayout(head);
    rows().addSpacing(spacing::item);
    for (std::size_t i = 0; i < metricCount; ++i) {
        metrics_.push_back(new MetricRowView(this));
        rows().addWidget(metrics_.back());
    }
    rows().addSpacing(spacing::item);
    rows().addWidget(makeDivider(this));
    rows().addSpacing(spacing::item);
    rows().addWidget(footer_);
}

void DiagnosticsSharePreviewCardView::show(const DiagnosticsSharePreviewCard& card) {
    name_->setText(toQString(card.name));
    subtitle_->setText(toQString(card.subtitle));
    capsule_->show(card.healthCapsule);
    for (std::size_t i = 0; i < std::min(metrics_.size(), card.metrics.size()); ++i)
        metrics_[i]->show(MetricRow{card.metrics[i].title, card.metrics[i].value});
    footer_->setText(toQString(card.footer));
}

} // namespace tolvo

#include "presentation/dashboard/dashboard_header_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/dashboard/dashboard_frame_content.h"
#include "presentation/rows/badge_view.h"
#include "presentation/rows/icon_button_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace tolvo {

namespace {

constexpr int markSize = 40;

/// The brand's mark.
class MarkView final : public QLabel {
public:
    explicit MarkView(QWidget* parent) : QLabel(parent) {
        setFixedSize(markSize, markSize);
        setAccessibleName(toQString(dashboardFrameContent.brandLabel));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        drawImage(painter, dashboardFrameContent.brandImageName, rect());
    }
};

} // namespace

DashboardHeaderView::DashboardHeaderView(QWidget* parent) : QWidget(parent) {
    const DashboardFrameContent& frame = dashboardFrameContent;
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(new MarkView(this));
    layout->addSpacing(spacing::item);
    auto* brand = new QHBoxLayout;
    brand->setSpacing(spacing::item);
    brand->addWidget(makeLabel(frame.brandLabel, TextStyle::Title, this));
    badge_ = new BadgeView(this);
    // In large type it gives way, before the header makes all groups wider than the panel.
    badge_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    badge_->setMinimumWidth(1);
    brand->addWidget(badge_);
    brand->addStretch();
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addLayout(brand);
    auto* subtitle = makeLabel(frame.subtitle, TextStyle::Caption, this, QPalette::PlaceholderText);
    subtitle->setWordWrap(true);
    texts->addWidget(subtitle);
    layout->addLayout(texts, 1);
    for (const HeaderIconButton& button : frame.headerButtons) {
        auto* view = new IconButtonView(button.symbolName, button.accessibilityLabel, button.toolTip, this);
        QObject::connect(view, &QPushButton::clicked, this, [this, route = button.route] { onOpenPanel(route); });
        layout->addWidget(view);
    }
}

void DashboardHeaderView::show(const Badge& health) {
    badge_->show(health);
}

} // namespace tolvo

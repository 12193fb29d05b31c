#include "presentation/wifi_radar/wifi_radar_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/badge_view.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/name_label_view.h"
#include "presentation/rows/scroll_bar_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_ground_view.h"
#include "presentation/wifi_radar/radar_face_view.h"
#include "presentation/wifi_radar/radar_hint_view.h"
#include "presentation/wifi_radar/radar_metric_card_view.h"
#include "presentation/wifi_radar/radar_nearby_list_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tolvo {

namespace {

constexpr int margin = 20;
constexpr int gap = 18;
constexpr int symbolSide = 42;
/// In points, growing with the type as far as the face leaves room; in the widths of a digit.
constexpr int smallestIntroductionWidth = 250;
constexpr int largestIntroductionWidth = 330;
constexpr int introductionDigits = 30;
constexpr int nearbyWidth = 290;
/// With the rows' own, the distance of texts in any card.
constexpr int listInset = 5;
constexpr std::size_t cardCount = 4;

} // namespace

WiFiRadarView::WiFiRadarView(WiFiRadarController& controller, QWidget* parent)
    : QScrollArea(parent),
      controller_(controller),
      face_(new RadarFaceView([&controller] { return controller.sweepDegrees(); })) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setVerticalScrollBar(new ScrollBarView(this));
    setWidgetResizable(true);
    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(gap);
    grid->addWidget(makeIntroduction(), 0, 0);
    grid->addWidget(face_, 0, 1);
    grid->addLayout(makeCards(), 1, 0, 1, 2);
    grid->addWidget(makeNearbyCard(), 0, 2, 2, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(0, 1);
    setWidget(content);
}

WiFiRadarView::~WiFiRadarView() {
    controller_.close();
}

QWidget* WiFiRadarView::makeIntroduction() {
    auto* side = new QWidget;
    side->setFixedWidth(std::clamp(introductionDigits * fontMetrics().horizontalAdvance(QLatin1Char('0')),
                                   smallestIntroductionWidth, largestIntroductionWidth));
    hint_ = new RadarHintView(side);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing::item);
    auto* symbol = new SymbolGroundView(symbolSide, side);
    symbol->show(wifi_radar::symbolName, Tone::Blue);
    auto* head = new QHBoxLayout;
    head->setSpacing(spacing::inside);
    head->addWidget(symbol);
    head->addWidget(makeWrappedLabel(wifi_radar::title, TextStyle::Title, side), 1);
    column->addLayout(head);
    column->addSpacing(2);
    column->addWidget(makeWrappedLabel(wifi_radar::subtitle, TextStyle::Body, side, QPalette::PlaceholderText));
    column->addSpacing(spacing::item);
    column->addWidget(hint_);
    column->addStretch();
    column->addWidget(makeNetworkCard());
    return side;
}

QWidget* WiFiRadarView::makeNetworkCard() {
    auto* card = new CardView("");
    networkName_ = new NameLabelView(card);
    networkName_->setFont(textFont(TextStyle::Headline, *this));
    currentTag_ = new BadgeView(card);
    currentTag_->show({std::string(wifi_radar::currentTag), Tone::Green});
    channel_ = makeWrappedLabel("", TextStyle::Caption, card, QPalette::PlaceholderText);
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::item);
    line->addWidget(networkName_, 1);
    line->addWidget(currentTag_);
    card->rows().addLayout(line);
    card->rows().addSpacing(2);
    card->rows().addWidget(channel_);
    return card;
}

QLayout* WiFiRadarView::makeCards() {
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::inside);
    for (std::size_t i = 0; i < cardCount; ++i) {
        cards_.push_back(new RadarMetricCardView);
        line->addWidget(cards_.back(), 1);
    }
    return line;
}

QWidget* WiFiRadarView::makeNearbyCard() {
    auto* card = new CardView("");
    card->setFixedWidth(nearbyWidth);
    card->setAccessibleName(toQString(wifi_radar::nearbyTitle));
    card->rows().setContentsMargins(listInset, listInset, listInset, listInset);
    auto* title = makeWrappedLabel(wifi_radar::nearbyTitle, TextStyle::Headline, card);
    title->setContentsMargins(RadarNearbyListView::rowInset, spacing::item, RadarNearbyListView::rowInset, 4);
    card->rows().addWidget(title);
    nearby_ = new RadarNearbyListView(card);
    nearbyPlaceholder_ = makeWrappedLabel("", TextStyle::Body, card, QPalette::PlaceholderText);
    nearbyPlaceholder_->setAlignment(Qt::AlignCenter);
    card->rows().addWidget(nearby_, 1);
    card->rows().addWidget(nearbyPlaceholder_, 1);
    return card;
}

void WiFiRadarView::show(const WiFiRadarContent& content) {
    hint_->show(content);
    face_->show(content);
    networkName_->show(content.networkName);
    currentTag_->setVisible(content.hasCurrentTag);
    channel_->setText(toQString(content.channelLine));
    for (std::size_t i = 0; i < std::min(cards_.size(), content.cards.size()); ++i)
        cards_[i]->show(content.cards[i]);
    nearby_->show(content.nearby);
    nearby_->setVisible(!content.nearby.empty());
    nearbyPlaceholder_->setText(toQString(content.nearbyPlaceholder));
    nearbyPlaceholder_->setVisible(content.nearby.empty());
}

void WiFiRadarView::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    if (event->spontaneous())
        return;
    controller_.open(*this);
    // No control is chosen yet: the first Tab goes to the first one.
    setFocus(Qt::OtherFocusReason);
}

void WiFiRadarView::hideEvent(QHideEvent* event) {
    QScrollArea::hideEvent(event);
    if (!event->spontaneous())
        controller_.close();
}

} // namespace tolvo

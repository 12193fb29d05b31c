#include "presentation/speed_test/speed_test_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/badge_view.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/figure_tile_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/text_button_view.h"
#include "presentation/speed_test/speed_test_frame_content.h"
#include "presentation/speed_test/speed_test_rows_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tolvo {

namespace {

constexpr std::size_t directionCount = 2;
constexpr std::size_t latencyCount = 3;
/// In points; the name of somebody's own server may be long.
constexpr int longestServerTag = 240;

FigureTile figureTile(const SpeedTestMetricTile& tile) {
    return {tile.title, tile.symbolName, tile.value, tile.valueColor, {}, {}, {}};
}

FigureTile figureTile(const SpeedTestGradeTile& tile) {
    return {tile.title, {}, tile.grade, tile.gradeColor, {tile.ratio}, {}, tile.spokenTitle};
}

template<class Tile>
void showTiles(const std::vector<FigureTileView*>& views, const std::vector<Tile>& tiles) {
    for (std::size_t i = 0; i < std::min(views.size(), tiles.size()); ++i)
        views[i]->show(figureTile(tiles[i]));
}

} // namespace

SpeedTestView::SpeedTestView(SpeedTestController& controller, QWidget* parent)
    : ToolWindowView(speedTestFrameContent.window, parent),
      controller_(controller),
      button_(new TextButtonView("", ButtonProminence::Prominent, this)) {
    QObject::connect(button_, &QPushButton::clicked, this, [this] { controller_.pressButton(); });
    addHeaderTags();
    addFixedRows();
    addSections();
}

SpeedTestView::~SpeedTestView() {
    controller_.setDisplay(nullptr);
}

void SpeedTestView::addHeaderTags() {
    status_ = new BadgeView(this);
    auto* server = new BadgeView(this);
    server->show({controller_.serverTag(), Tone::Gray});
    server->setDetail(controller_.notice());
    server->setMaximumWidth(longestServerTag);
    server->setVisible(!controller_.serverTag().empty());
    header().addWidget(status_);
    header().addWidget(server);
}

void SpeedTestView::addFixedRows() {
    lastTested_ = makeWrappedLabel("", TextStyle::Body, this, QPalette::PlaceholderText);
    buttonRow_ = new QHBoxLayout;
    buttonRow_->setSpacing(spacing::inside);
    buttonRow_->addWidget(lastTested_, 1);
    progress_ = new SpeedTestProgressView(this);
    fixedRows().addLayout(buttonRow_);
    fixedRows().addWidget(progress_);
}

void SpeedTestView::addSections() {
    throughput_ = addSection(speedTestFrameContent.throughputTitle, directionCount);
    latency_ = addSection(speedTestFrameContent.latencyTitle, latencyCount);
    grades_ = addSection(speedTestFrameContent.bufferbloatTitle, directionCount);
    auto* card = new CardView("");
    for (std::size_t i = 0; i < directionCount; ++i) {
        insights_.push_back(new SpeedTestInsightView(card));
        card->rows().addWidget(insights_.back());
    }
    body().addWidget(card);
    body().addStretch();
}

SpeedTestView::Tiles SpeedTestView::addSection(std::string_view title, std::size_t tileCount) {
    // Nearer to its own tiles than to those above it.
    if (body().count() > 0)
        body().addSpacing(spacing::item);
    auto* section = new QVBoxLayout;
    section->setSpacing(spacing::item);
    section->addWidget(makeWrappedLabel(title, TextStyle::Headline, this));
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::group);
    Tiles tiles;
    for (std::size_t i = 0; i < tileCount; ++i) {
        tiles.push_back(new FigureTileView(this));
        line->addWidget(tiles.back());
    }
    section->addLayout(line);
    body().addLayout(section);
    return tiles;
}

void SpeedTestView::show(const SpeedTestContent& content) {
    status_->setVisible(content.statusBadge.has_value());
    if (content.statusBadge)
        status_->show(*content.statusBadge);
    status_->setDetail(content.statusDetail);
    button_->setTitle(content.buttonLabel);
    button_->setProminence(content.isRunning ? ButtonProminence::Standard : ButtonProminence::Prominent);
    placeButton(content.isEmpty);
    setInvitationVisible(content.isEmpty);
    lastTested_->setVisible(!content.isEmpty);
    lastTested_->setText(toQString(content.lastTestedLine));
    progress_->show(content);
    showSections(content);
}

void SpeedTestView::placeButton(bool isInvitation) {
    if (isInvitation && invitation().indexOf(button_) < 0)
        invitation().addWidget(button_, 0, Qt::AlignHCenter);
    else if (!isInvitation && buttonRow_->indexOf(button_) < 0)
        buttonRow_->insertWidget(0, button_);
}

void SpeedTestView::showSections(const SpeedTestContent& content) {
    showTiles(throughput_, content.throughput);
    showTiles(latency_, content.latency);
    showTiles(grades_, content.grades);
    for (std::size_t i = 0; i < std::min(insights_.size(), content.insights.size()); ++i)
        insights_[i]->show(content.insights[i]);
}

void SpeedTestView::showEvent(QShowEvent* event) {
    ToolWindowView::showEvent(event);
    controller_.setDisplay(this);
}

void SpeedTestView::hideEvent(QHideEvent* event) {
    ToolWindowView::hideEvent(event);
    controller_.setDisplay(nullptr);
}

} // namespace tolvo

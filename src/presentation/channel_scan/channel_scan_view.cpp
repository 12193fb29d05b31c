#include "presentation/channel_scan/channel_scan_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/channel_scan/channel_scan_frame_content.h"
#include "presentation/channel_scan/congestion_list_view.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/figure_tile_view.h"
#include "presentation/rows/inline_message_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/linear_progress_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/text_button_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace tolvo {

namespace {

constexpr int narrowProgressWidth = 320;

FigureTile figureTile(const ChannelScanSelectionCard& card) {
    return {card.title,       {}, card.lines.front(), Tone::Primary, {card.lines.begin() + 1, card.lines.end()},
            card.accentColor, {}};
}

FigureTile figureTile(std::string_view title, const std::string& value) {
    return {std::string(title), {}, value, Tone::Primary, {}, {}, {}};
}

} // namespace

ChannelScanView::ChannelScanView(ChannelScanController& controller, QWidget* parent)
    : ToolWindowView(channelScanFrameContent.window, parent),
      controller_(controller),
      button_(new TextButtonView("", ButtonProminence::Prominent, this)),
      progress_(makeProgress()),
      narrowProgress_(makeProgress()) {
    QObject::connect(button_, &QPushButton::clicked, this, [this] { controller_.pressButton(); });
    fixedRows().addWidget(progress_);
    narrowProgress_->setFixedWidth(narrowProgressWidth);
    invitation().addWidget(narrowProgress_, 0, Qt::AlignHCenter);
    addFigures();
    addCongestion();
    body().addStretch();
}

ChannelScanView::~ChannelScanView() {
    controller_.setDisplay(nullptr);
}

LinearProgressView* ChannelScanView::makeProgress() {
    auto* progress = new LinearProgressView(this);
    progress->setAccessibleName(toQString(channelScanFrameContent.progressLabel));
    return progress;
}

void ChannelScanView::addFigures() {
    for (const auto& [first, second] : {std::pair(&networksSeen_, &passes_), std::pair(&current_, &recommended_)}) {
        auto* line = new QHBoxLayout;
        line->setSpacing(spacing::group);
        for (FigureTileView** tile : {first, second}) {
            *tile = new FigureTileView(this);
            line->addWidget(*tile);
        }
        body().addLayout(line);
    }
    comparison_ = new InlineMessageView(this);
    body().addWidget(comparison_);
}

void ChannelScanView::addCongestion() {
    auto* card = new CardView(channelScanFrameContent.bandCongestionTitle, this);
    card->rows().addWidget(makeWrappedLabel(channelScanFrameContent.bandCongestionNote, TextStyle::Caption, card,
                                            QPalette::PlaceholderText));
    card->rows().addSpacing(spacing::item);
    congestion_ = new CongestionListView(card);
    noChannels_ =
        makeWrappedLabel(channelScanFrameContent.noChannels, TextStyle::Body, card, QPalette::PlaceholderText);
    card->rows().addWidget(congestion_);
    card->rows().addWidget(noChannels_);
    body().addWidget(card);
}

void ChannelScanView::show(const ChannelScanContent& content) {
    button_->setTitle(content.buttonLabel);
    button_->setProminence(content.isScanning ? ButtonProminence::Standard : ButtonProminence::Prominent);
    placeButton(content.isScanning || content.hasResult);
    setInvitationVisible(!content.hasResult);
    showProgress(content);
    if (content.hasResult)
        showResult(content);
}

void ChannelScanView::placeButton(bool isInHeader) {
    if (isInHeader && header().indexOf(button_) < 0)
        header().addWidget(button_);
    else if (!isInHeader && invitation().indexOf(button_) < 0)
        invitation().addWidget(button_, 0, Qt::AlignHCenter);
}

void ChannelScanView::showProgress(const ChannelScanContent& content) {
    for (LinearProgressView* progress : {progress_, narrowProgress_})
        progress->show(content.progress);
    progress_->setVisible(content.isScanning);
    narrowProgress_->setVisible(content.isScanning && !content.hasResult);
}

void ChannelScanView::showResult(const ChannelScanContent& content) {
    networksSeen_->show(figureTile(channelScanFrameContent.networksSeenTitle, content.networksSeen));
    passes_->show(figureTile(channelScanFrameContent.passesTitle, content.passes));
    current_->show(figureTile(content.current));
    recommended_->show(figureTile(content.recommended));
    comparison_->show({content.comparison, channelScanFrameContent.comparisonColor});
    congestion_->show(content.rows);
    congestion_->setVisible(!content.rows.empty());
    noChannels_->setVisible(content.rows.empty());
}

void ChannelScanView::showEvent(QShowEvent* event) {
    ToolWindowView::showEvent(event);
    controller_.setDisplay(this);
}

void ChannelScanView::hideEvent(QHideEvent* event) {
    ToolWindowView::hideEvent(event);
    controller_.setDisplay(nullptr);
}

} // namespace tolvo

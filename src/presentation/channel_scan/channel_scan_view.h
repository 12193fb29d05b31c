#pragma once

#include "presentation/channel_scan/channel_scan_controller.h"
#include "presentation/tool_window/tool_window_view.h"

namespace tolvo {

class CongestionListView;
class FigureTileView;
class InlineMessageView;
class LinearProgressView;
class TextButtonView;

/// The channel scan's window: its button, the passes of a scan, and how the channels of the band compare.
class ChannelScanView final : public ToolWindowView, public ContentDisplaying<ChannelScanContent> {
public:
    explicit ChannelScanView(ChannelScanController& controller, QWidget* parent = nullptr);
    ~ChannelScanView() override;

    void show(const ChannelScanContent& content) override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    LinearProgressView* makeProgress();
    void addFigures();
    void addCongestion();
    void placeButton(bool isInHeader);
    void showProgress(const ChannelScanContent& content);
    void showResult(const ChannelScanContent& content);

    ChannelScanController& controller_;
    TextButtonView* button_;
    LinearProgressView* progress_;
    LinearProgressView* narrowProgress_;
    FigureTileView* networksSeen_ = nullptr;
    FigureTileView* passes_ = nullptr;
    FigureTileView* current_ = nullptr;
    FigureTileView* recommended_ = nullptr;
    InlineMessageView* comparison_ = nullptr;
    QWidget* congestionCard_ = nullptr;
    CongestionListView* congestion_ = nullptr;
    QLabel* noChannels_ = nullptr;
};

} // namespace tolvo

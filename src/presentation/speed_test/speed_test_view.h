#pragma once

#include "presentation/speed_test/speed_test_controller.h"
#include "presentation/tool_window/tool_window_view.h"

#include <vector>

namespace tolvo {

class BadgeView;
class FigureTileView;
class SpeedTestInsightView;
class SpeedTestProgressView;
class TextButtonView;

/// The speed test's window: its button, the progress of a run, and the figures as they come in.
class SpeedTestView final : public ToolWindowView, public ContentDisplaying<SpeedTestContent> {
public:
    explicit SpeedTestView(SpeedTestController& controller, QWidget* parent = nullptr);
    ~SpeedTestView() override;

    void show(const SpeedTestContent& content) override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    using Tiles = std::vector<FigureTileView*>;

    void addHeaderTags();
    void addFixedRows();
    void addSections();
    Tiles addSection(std::string_view title, std::size_t tileCount);
    void placeButton(bool isInvitation);
    void showSections(const SpeedTestContent& content);

    SpeedTestController& controller_;
    BadgeView* status_ = nullptr;
    TextButtonView* button_;
    QHBoxLayout* buttonRow_ = nullptr;
    QLabel* lastTested_ = nullptr;
    SpeedTestProgressView* progress_ = nullptr;
    Tiles throughput_;
    Tiles latency_;
    Tiles grades_;
    std::vector<SpeedTestInsightView*> insights_;
};

} // namespace tolvo

#pragma once

#include "presentation/wifi_radar/wifi_radar_controller.h"

#include <QScrollArea>

#include <vector>

class QLabel;
class QLayout;

namespace tolvo {

class BadgeView;
class NameLabelView;
class RadarFaceView;
class RadarHintView;
class RadarMetricCardView;
class RadarNearbyListView;

/// The radar window's content: the face with its sweep, the advice, the link's figures, and who else is on the air. Its
/// readings and scans run from when the window is opened until it is closed, also while it is minimised.
class WiFiRadarView final : public QScrollArea, public ContentDisplaying<WiFiRadarContent> {
public:
    explicit WiFiRadarView(WiFiRadarController& controller, QWidget* parent = nullptr);
    ~WiFiRadarView() override;

    void show(const WiFiRadarContent& content) override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeIntroduction();
    QWidget* makeNetworkCard();
    QLayout* makeCards();
    QWidget* makeNearbyCard();

    WiFiRadarController& controller_;
    RadarHintView* hint_ = nullptr;
    RadarFaceView* face_;
    NameLabelView* networkName_ = nullptr;
    BadgeView* currentTag_ = nullptr;
    QLabel* channel_ = nullptr;
    std::vector<RadarMetricCardView*> cards_;
    RadarNearbyListView* nearby_ = nullptr;
    QLabel* nearbyPlaceholder_ = nullptr;
};

} // namespace tolvo

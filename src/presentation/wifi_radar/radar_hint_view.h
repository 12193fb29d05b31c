#pragma once

#include "presentation/wifi_radar/wifi_radar_content.h"

#include <QLabel>

namespace tolvo {

/// Which way to go, as an arrow and in words, in the score's colour.
class RadarHintView final : public QLabel {
public:
    explicit RadarHintView(QWidget* parent = nullptr);

    void show(const WiFiRadarContent& content);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string symbolName_;
    QString hint_;
    Tone color_ = Tone::Orange;
};

} // namespace tolvo

#pragma once

#include "presentation/wifi_radar/radar_face_layers_view.h"

#include <QLabel>
#include <QTimer>

#include <functional>

namespace tolvo {

/// The radar's face with its turning sweep: drawn for every frame of the screen while it can be seen, and not at all
/// while it is hidden or its window minimised. For assistive programs it is a label whose description has score and
/// advice.
class RadarFaceView final : public QLabel {
public:
    /// The source says where the sweep's wedge begins now, in degrees clockwise from the right.
    explicit RadarFaceView(std::function<double()> sweepDegrees, QWidget* parent = nullptr);

    void show(const WiFiRadarContent& content);
    QSize sizeHint() const override { return {420, 420}; }
    QSize minimumSizeHint() const override { return {320, 320}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void keepLayers();

    std::function<double()> sweepDegrees_;
    RadarCentre centre_;
    /// What the layers were made for.
    RadarFaceLook look_;
    QPixmap ground_;
    QPixmap centrePicture_;
    QTimer frames_;
};

} // namespace tolvo

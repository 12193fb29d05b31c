#pragma once

#include "presentation/wifi_radar/wifi_radar_content.h"

#include <QFont>
#include <QPixmap>

class QPainter;

namespace tolvo {

/// How the radar's face looks: layers that stand still, to be kept as pictures, and the sweep between them.
struct RadarFaceLook {
    /// In points.
    QSize size;
    double devicePixelRatio = 1;
    /// Around the disc.
    QColor surroundings;
    /// The coverage message's.
    QFont font;

    bool operator==(const RadarFaceLook&) const = default;
};

/// The disc in the middle of the face.
QRectF radarDisc(const QSize& size);

/// The dark disc with its rings and its cross. Covers the whole face, and nothing shines through.
QPixmap radarGround(const RadarFaceLook& look);
/// The wedge, so many degrees clockwise from the right.
void paintRadarSweep(QPainter& painter, const QRectF& disc, double degrees, const QColor& color);
/// What stands in the disc's middle.
struct RadarCentre {
    std::string symbolName;
    std::string score;
    std::string coverageMessage;
    Tone color = Tone::Orange;

    bool operator==(const RadarCentre&) const = default;
};

/// Where the middle's texts are; nothing is painted outside.
QRectF radarCentreRect(const QSize& size);
/// Symbol, score and coverage message, on nothing, as large as radarCentreRect().
QPixmap radarCentrePicture(const RadarFaceLook& look, const RadarCentre& centre);

} // namespace tolvo

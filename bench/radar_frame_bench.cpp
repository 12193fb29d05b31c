// One frame of the radar's face at 1080 by 680 points, drawn by the processor at scale 1: with its still layers kept as
// pictures, as the window draws it, and as a peer with everything drawn anew. Then one frame of the whole window.

#include "presentation/rows/style_view.h"
#include "presentation/wifi_radar/radar_face_layers_view.h"
#include "presentation/wifi_radar/radar_face_view.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

namespace tolvo {
namespace {

constexpr QSize windowSize(1080, 680);

double nextDegrees() {
    static double seconds = 0;
    return radarSweepDegrees(seconds += 1.0 / 60);
}

RadarFaceLook look() {
    return {windowSize, 1, QColor(0x1D2127), QApplication::font()};
}

RadarCentre centre() {
    return {"checkmark.circle.fill", "80", "Good spot: signal is stable.", Tone::Green};
}

void paintFrame(QImage& frame, const QPixmap& ground, const QPixmap& centrePicture) {
    QPainter painter(&frame);
    painter.drawPixmap(QPoint(), ground);
    paintRadarSweep(painter, radarDisc(windowSize), nextDegrees(), toneColor(Tone::Green, darkGroundPalette()));
    painter.drawPixmap(radarCentreRect(windowSize).topLeft(), centrePicture);
}

void keptLayers(benchmark::State& state) {
    QImage frame(windowSize, QImage::Format_RGB32);
    const QPixmap ground = radarGround(look());
    const QPixmap centrePicture = radarCentrePicture(look(), centre());
    for (auto _ : state)
        paintFrame(frame, ground, centrePicture);
}

void everythingAnew(benchmark::State& state) {
    QImage frame(windowSize, QImage::Format_RGB32);
    for (auto _ : state)
        paintFrame(frame, radarGround(look()), radarCentrePicture(look(), centre()));
}

/// Through the toolkit's own store, with what stands behind the face.
void windowFrame(benchmark::State& state) {
    QWidget window;
    window.resize(windowSize);
    RadarFaceView face(nextDegrees, &window);
    face.resize(windowSize);
    window.show();
    QApplication::processEvents();
    for (auto _ : state)
        face.repaint();
}

BENCHMARK(keptLayers)->Unit(benchmark::kMillisecond);
BENCHMARK(everythingAnew)->Unit(benchmark::kMillisecond);
BENCHMARK(windowFrame)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tolvo

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

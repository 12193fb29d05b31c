// A report of one megabyte becomes visible: in the export window's page, and as a peer in a bare text widget.

#include "presentation/diagnostics_export/export_ready_view.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <benchmark/benchmark.h>

namespace tolvo {
namespace {

constexpr std::size_t reportBytes = 1'000'000;
constexpr QSize windowSize(1020, 700);

/// Lines like a report's; each time another text, so that nothing is known already.
std::string nextReport() {
    static int count = 0;
    std::string text = "{ \"report\" : " + std::to_string(++count) + ",\n";
    while (text.size() < reportBytes)
        text += "    \"capturedAt\" : \"2026-01-31T09:30:05Z\",\n";
    return text + "}";
}

template<class Widget, class Fill>
void showReports(benchmark::State& state, Widget& widget, const Fill& fill) {
    widget.resize(windowSize);
    widget.QWidget::show();
    QApplication::processEvents();
    for (auto _ : state) {
        state.PauseTiming();
        const std::string report = nextReport();
        state.ResumeTiming();
        fill(report);
        widget.repaint();
        QApplication::processEvents();
    }
}

void exportPage(benchmark::State& state) {
    ExportReadyView page;
    showReports(state, page, [&](const std::string& report) { page.show({{}, report}); });
}

void bareTextWidget(benchmark::State& state) {
    QPlainTextEdit edit;
    showReports(state, edit, [&](const std::string& report) { edit.setPlainText(QString::fromStdString(report)); });
}

BENCHMARK(exportPage)->Unit(benchmark::kMillisecond);
BENCHMARK(bareTextWidget)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tolvo

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

#include "presentation/speed_test/speed_test_content.h"

#include <utility>

namespace tolvo {

namespace {

std::optional<Badge> statusBadge(SpeedTestPhase phase) {
    switch (phase) {
    case SpeedTestPhase::Completed:
        return Badge{"Completed", Tone::Green};
    case SpeedTestPhase::Cancelled:
        return Badge{"Cancelled", Tone::Orange};
    case SpeedTestPhase::Failed:
        return Badge{"Failed", Tone::Red};
    case SpeedTestPhase::Idle:
    case SpeedTestPhase::Download:
    case SpeedTestPhase::Upload:
        return std::nullopt;
    }
    std::unreachable();
}

std::string phaseText(SpeedTestPhase phase) {
    switch (phase) {
    case SpeedTestPhase::Idle:
        return "Measure current download and upload throughput.";
    case SpeedTestPhase::Download:
        return "Running download phase...";
    case SpeedTestPhase::Upload:
        return "Running upload phase...";
    case SpeedTestPhase::Completed:
        return "Speed test completed.";
    case SpeedTestPhase::Cancelled:
        return "Speed test cancelled.";
    case SpeedTestPhase::Failed:
        return "Speed test failed.";
    }
    std::unreachable();
}

std::string statusLine(const SpeedTestSources& sources) {
    const SpeedTestPhase phase = sources.phase.value();
    if (sources.lastErrorMessage.value() && phase == SpeedTestPhase::Failed)
        return *sources.lastErrorMessage.value();
    if (sources.isRunning.value() && sources.progress.value() == 0 && !sources.baselineLatencyMilliseconds.value())
        return "Capturing baseline latency...";
    return phaseText(phase);
}

Tone gradeColor(std::optional<BufferbloatGrade> grade) {
    if (!grade)
        return Tone::Dimmed;
    switch (*grade) {
    case BufferbloatGrade::A:
    case BufferbloatGrade::B:
        return Tone::Green;
    case BufferbloatGrade::C:
        return Tone::Orange;
    case BufferbloatGrade::F:
        return Tone::Red;
    }
    std::unreachable();
}

std::string gradeText(std::optional<BufferbloatGrade> grade) {
    if (!grade)
        return "grade unavailable";
    switch (*grade) {
    case BufferbloatGrade::A:
        return "grade A, minimal bufferbloat";
    case BufferbloatGrade::B:
        return "grade B, minimal bufferbloat";
    case BufferbloatGrade::C:
        return "grade C, noticeable bufferbloat";
    case BufferbloatGrade::F:
        return "grade F, severe bufferbloat";
    }
    std::unreachable();
}

SpeedTestGradeTile gradeTile(std::string title, std::optional<BufferbloatGrade> grade, std::optional<double> ratio,
                             const NumberFormat& format) {
    std::string spokenTitle = title + " bufferbloat";
    return {std::move(title), std::string(grade ? rawValue(*grade) : absentValueText),
            ratio ? formatDecimal(*ratio, 2, format) + "x baseline" : "ratio unavailable", gradeColor(grade),
            std::move(spokenTitle)};
}

std::string insightText(const std::string& label, std::optional<double> baseline, std::optional<double> loaded,
                        bool isPhaseFinalized, std::optional<BufferbloatGrade> grade, const NumberFormat& format) {
    const std::string beginning = label + " lag under load: ";
    if (baseline && loaded) {
        return beginning + formatDecimal(*baseline, 0, format) + "ms -> " + formatDecimal(*loaded, 0, format) + "ms (" +
               gradeText(grade) + ").";
    }
    return beginning + (isPhaseFinalized ? "sample unavailable for this run." : "collecting sample...");
}

std::vector<SpeedTestInsightRow> insights(const SpeedTestSources& sources, const NumberFormat& format) {
    const SpeedTestPhase phase = sources.phase.value();
    const bool isOver = statusBadge(phase).has_value();
    const auto baseline = sources.baselineLatencyMilliseconds.value();
    const auto row = [&](const char* symbol, const char* label, std::optional<double> loaded, bool isFinalized,
                         std::optional<BufferbloatGrade> grade) {
        return SpeedTestInsightRow{symbol, gradeColor(grade),
                                   insightText(label, baseline, loaded, isFinalized, grade, format)};
    };
    return {row("arrow.down", "Download", sources.downloadLoadedLatencyMilliseconds.value(),
                isOver || phase == SpeedTestPhase::Upload, sources.downloadBufferbloatGrade.value()),
            row("arrow.up", "Upload", sources.uploadLoadedLatencyMilliseconds.value(), isOver,
                sources.uploadBufferbloatGrade.value())};
}

std::string buttonLabel(const SpeedTestSources& sources) {
    if (sources.isRunning.value())
        return "Cancel";
    return sources.latestResult.value() ? "Retest" : "Run Test";
}

} // namespace

std::vector<Subscription> subscribeToAll(const SpeedTestSources& sources, const std::function<void()>& onChange) {
    return subscribeToEach(onChange, sources.isRunning, sources.phase, sources.progress, sources.downloadMbps,
                           sources.uploadMbps, sources.baselineLatencyMilliseconds,
                           sources.downloadLoadedLatencyMilliseconds, sources.uploadLoadedLatencyMilliseconds,
                           sources.downloadBufferbloatRatio, sources.uploadBufferbloatRatio,
                           sources.downloadBufferbloatGrade, sources.uploadBufferbloatGrade, sources.latestResult,
                           sources.lastErrorMessage);
}

std::string speedTestServerTag(const URL& server) {
    const std::string& host = server.host();
    return host == "cloudflare.com" || host.ends_with(".cloudflare.com") ? "Cloudflare" : host;
}

SpeedTestContent speedTestContent(const SpeedTestSources& sources, const NumberFormat& format,
                                  const ShortTimeFormat& shortTime) {
    const auto& result = sources.latestResult.value();
    const bool isRunning = sources.isRunning.value();
    const auto speed = [&](std::optional<double> value) { return formatQuantity(value, 1, "Mbps", format); };
    const auto lag = [&](std::optional<double> value) { return formatQuantity(value, 0, "ms", format); };
    return {
        .statusBadge = statusBadge(sources.phase.value()),
        .statusDetail = sources.lastErrorMessage.value().value_or(""),
        .isEmpty = !isRunning && !result && !sources.downloadMbps.value() && !sources.uploadMbps.value(),
        .buttonLabel = buttonLabel(sources),
        .lastTestedLine =
            "Last tested at " + (result ? shortTime(result->timestamp) + "." : std::string(absentValueText)),
        .isRunning = isRunning,
        .progress = sources.progress.value(),
        .progressPercent = formatDecimal(sources.progress.value() * 100, 0, format) + "%",
        .statusLine = statusLine(sources),
        .throughput = {{"Download", "arrow.down", speed(sources.downloadMbps.value()), Tone::Green},
                       {"Upload", "arrow.up", speed(sources.uploadMbps.value()), Tone::Red}},
        .latency = {{"Baseline", "", lag(sources.baselineLatencyMilliseconds.value())},
                    {"Download Load", "", lag(sources.downloadLoadedLatencyMilliseconds.value())},
                    {"Upload Load", "", lag(sources.uploadLoadedLatencyMilliseconds.value())}},
        .grades = {gradeTile("Download", sources.downloadBufferbloatGrade.value(),
                             sources.downloadBufferbloatRatio.value(), format),
                   gradeTile("Upload", sources.uploadBufferbloatGrade.value(), sources.uploadBufferbloatRatio.value(),
                             format)},
        .insights = insights(sources, format),
    };
}

} // namespace tolvo

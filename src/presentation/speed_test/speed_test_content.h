#pragma once

#include "core/async/published.h"
#include "core/model/speed_test_result.h"
#include "core/model/url.h"
#include "presentation/rows/tone.h"
#include "presentation/rows/value_format.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// The published values of the speed test.
struct SpeedTestSources {
    Published<bool>& isRunning;
    Published<SpeedTestPhase>& phase;
    /// 0 to 1.
    Published<double>& progress;
    Published<std::optional<double>>& downloadMbps;
    Published<std::optional<double>>& uploadMbps;
    Published<std::optional<double>>& baselineLatencyMilliseconds;
    Published<std::optional<double>>& downloadLoadedLatencyMilliseconds;
    Published<std::optional<double>>& uploadLoadedLatencyMilliseconds;
    Published<std::optional<double>>& downloadBufferbloatRatio;
    Published<std::optional<double>>& uploadBufferbloatRatio;
    Published<std::optional<BufferbloatGrade>>& downloadBufferbloatGrade;
    Published<std::optional<BufferbloatGrade>>& uploadBufferbloatGrade;
    Published<std::optional<SpeedTestResult>>& latestResult;
    Published<std::optional<std::string>>& lastErrorMessage;
};

/// What the test's button asks for.
struct SpeedTestActions {
    std::function<void()> startTest;
    std::function<void()> cancelTest;
};

std::vector<Subscription> subscribeToAll(const SpeedTestSources& sources, const std::function<void()>& onChange);

struct SpeedTestMetricTile {
    std::string title;
    std::string symbolName;
    std::string value;
    Tone valueColor = Tone::Primary;

    bool operator==(const SpeedTestMetricTile&) const = default;
};

struct SpeedTestGradeTile {
    std::string title;
    /// A letter, or the dash.
    std::string grade;
    std::string ratio;
    Tone gradeColor = Tone::Dimmed;
    /// Set apart from the throughput of the same title.
    std::string spokenTitle;

    bool operator==(const SpeedTestGradeTile&) const = default;
};

struct SpeedTestInsightRow {
    std::string indicatorSymbolName;
    Tone indicatorColor = Tone::Dimmed;
    std::string text;

    bool operator==(const SpeedTestInsightRow&) const = default;
};

/// All that the speed test says at one moment.
struct SpeedTestContent {
    std::optional<Badge> statusBadge;
    /// Why a run failed; else empty.
    std::string statusDetail;
    /// Nothing was measured and nothing runs: only the invitation is shown.
    bool isEmpty = true;
    std::string buttonLabel;
    std::string lastTestedLine;
    bool isRunning = false;
    double progress = 0;
    std::string progressPercent;
    std::string statusLine;
    std::vector<SpeedTestMetricTile> throughput;
    std::vector<SpeedTestMetricTile> latency;
    std::vector<SpeedTestGradeTile> grades;
    std::vector<SpeedTestInsightRow> insights;

    bool operator==(const SpeedTestContent&) const = default;
};

/// Gives a time without its date, as the user's locale writes it.
using ShortTimeFormat = std::function<std::string(WallTime)>;

/// Whose server it is, in one word; its host where that isn't known.
std::string speedTestServerTag(const URL& server);

SpeedTestContent speedTestContent(const SpeedTestSources& sources, const NumberFormat& format,
                                  const ShortTimeFormat& shortTime);

} // namespace tolvo

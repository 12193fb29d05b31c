#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "core/model/wall_time.h"
#include "core/sleep_providing.h"
#include "export/collection_stage.h"
#include "export/diagnostics_collection_sources.h"
#include "export/diagnostics_export_report.h"

#include <optional>
#include <set>
#include <string>

namespace tolvo {

/// Makes a report: runs a fresh channel scan and a fresh speed test, or waits for those that are running, each up to a
/// deadline, and puts everything together. The report always comes, whatever the tests did. Main thread only.
class DiagnosticsCollection final {
public:
    DiagnosticsCollection(MainLoop& loop, DiagnosticsCollectionSources sources, SleepProviding& sleeper,
                          DateProvider dateProvider);

    Published<bool> isCollectingReport{false};
    /// 0 to 1.
    Published<double> collectionProgress{0};
    Published<std::string> collectionMessage{"Collecting metrics..."};
    Published<std::set<CollectionStage>> completedStages;
    Published<std::optional<DiagnosticsExportReport>> collectedReport;
    /// The report's text; a fixed text that says so, if the report can't be written as JSON.
    Published<std::optional<std::string>> collectedReportJSONString;

    /// Begins at once by clearing the last report. Does nothing while a collection is running.
    void collect();

    /// "tolvo-diagnostics-", the local time of the report (or now), ".json".
    std::string fileName() const;

private:
    using Message = std::optional<std::string>;

    Task<void> run();
    /// Gives the message of a test that had to be broken off.
    Task<Message> waitFor(const OnDemandTest& test, double deadlineSeconds, std::string timeoutMessage);
    void buildReport(Message channelScanMessage, Message speedTestMessage);
    DiagnosticsExportInput currentInput() const;
    void begin(CollectionStage stage);
    void complete(CollectionStage stage);
    Task<void> pause(double seconds);
    Task<void> sleep(double seconds);

    MainLoop& loop_;
    const DiagnosticsCollectionSources sources_;
    SleepProviding& sleeper_;
    const DateProvider dateProvider_;
    TaskScope tasks_;
};

} // namespace tolvo

#pragma once

#include "app/app_delegate.h"

#include <functional>
#include <string>

namespace tolvo {

/// One collection from start to end: lets the monitors give their first results, then collects the report. Main thread
/// only.
class ReportRun {
public:
    /// Is told where the run is: a share from 0 to 1 and a sentence. Called on each change.
    using Progress = std::function<void(double share, const std::string& message)>;
    using Completion = std::function<void(std::string report, std::string fileName)>;

    ReportRun(AppDelegate& delegate, Progress progress, Completion completion);
    ReportRun(const ReportRun&) = delete;
    ReportRun& operator=(const ReportRun&) = delete;

    void start();

private:
    Task<void> run();
    Task<void> waitForFirstResults();
    Task<void> collect();
    bool haveAllMonitorsResults() const;
    void tellProgress();

    SystemServices& system_;
    Monitoring& monitoring_;
    DiagnosticsCollection& collection_;
    Progress progress_;
    Completion completion_;
    Signal change_;
    std::vector<Subscription> subscriptions_;
    TaskScope tasks_;
};

} // namespace tolvo

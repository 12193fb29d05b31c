#pragma once

#include "core/async/task.h"
#include "core/model/url.h"
#include "integration/available_update.h"
#include "platform/services/bundle_information.h"
#include "platform/services/json_reading.h"
#include "platform/services/process_information.h"
#include "platform/services/url_session.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace tolvo {

struct UpToDate {};
struct CheckFailed {};
/// An available update has an absolute web address to download it from.
using UpdateCheckResult = std::variant<AvailableUpdate, UpToDate, CheckFailed>;

/// Knows where to ask for a newer build, and what makes a reply a good one. Main thread only.
class AppUpdateService {
public:
    /// The endpoint and the base of downloads are those of the environment, else of the bundle, else built in.
    AppUpdateService(URLSession& session, const JSONReading& jsonReader, const BundleInformation& mainBundle,
                     const ProcessInformation& processInformation);
    AppUpdateService(const AppUpdateService&) = delete;
    AppUpdateService& operator=(const AppUpdateService&) = delete;

    /// Throws CancellationError; whatever else goes wrong is CheckFailed.
    Task<UpdateCheckResult> checkForUpdate();

private:
    UpdateCheckResult resultOf(const HTTPResponse& response) const;
    std::optional<URL> downloadURL(const AvailableUpdate& update) const;

    URLSession& session_;
    const JSONReading& jsonReader_;
    const URL updateEndpointURL_;
    const std::optional<URL> updateDownloadBaseURL_;
    const std::int64_t currentBuildNumber_;
};

} // namespace tolvo

#pragma once

#include "core/async/task.h"
#include "platform/services/url_session.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <variant>

namespace tolvo {

/// How much a test moves. Sizes are decimal.
struct SpeedTestConfiguration {
    std::int64_t downloadChunkSizeBytes = 8'000'000;
    /// All run at once, as do those of the upload.
    std::int64_t downloadChunks = 4;
    std::int64_t uploadChunkSizeBytes = 3'000'000;
    std::int64_t uploadChunks = 4;
    /// Seconds without progress after which a chunk, and the direction with it, fails.
    double requestTimeout = 10.0;

    bool operator==(const SpeedTestConfiguration&) const = default;
};

enum class SpeedTestRunnerError {
    /// The configuration or a URL does not allow a request.
    InvalidRequest,
    /// A response that is not an HTTP one with a status of 200 to 299.
    InvalidResponse,
    /// All chunks succeeded, with less than one byte in total.
    NoDataTransferred,
};

/// Or the transport's error as it came.
using SpeedTestError = std::variant<SpeedTestRunnerError, URLSessionError>;

/// One direction, measured.
struct SpeedTestTransfer {
    std::int64_t totalBytes = 0;
    double throughputMbps = 0;
    double elapsedSeconds = 0;

    bool operator==(const SpeedTestTransfer&) const = default;
};

using SpeedTestOutcome = std::expected<SpeedTestTransfer, SpeedTestError>;

/// Is given the share of finished chunks, above 0 and up to 1; the next one is taken when its task has ended.
using SpeedTestProgress = std::function<Task<void>(double fraction)>;

/// Measures throughput in one direction at a time.
class SpeedTesting {
public:
    SpeedTesting(const SpeedTesting&) = delete;
    SpeedTesting& operator=(const SpeedTesting&) = delete;
    virtual ~SpeedTesting() = default;

    /// The first failing chunk ends the others and is the outcome. A cancelled measurement throws CancellationError.
    virtual Task<SpeedTestOutcome> measureDownload(SpeedTestConfiguration configuration,
                                                   SpeedTestProgress progress) = 0;
    virtual Task<SpeedTestOutcome> measureUpload(SpeedTestConfiguration configuration, SpeedTestProgress progress) = 0;

protected:
    SpeedTesting() = default;
};

} // namespace tolvo

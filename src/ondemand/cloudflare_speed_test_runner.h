#pragma once

#include "core/async/main_loop.h"
#include "ondemand/speed_test_endpoint.h"
#include "ondemand/speed_testing.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <vector>

namespace tolvo {

/// Measures with parallel requests to Cloudflare's service, or to a server that answers like it. Each chunk has a
/// connection of its own. Connection set-up counts; nothing is retried. Holds no state between calls.
class CloudflareSpeedTestRunner final : public SpeedTesting {
public:
    CloudflareSpeedTestRunner(MainLoop& loop, URLSession& session, SpeedTestEndpoint endpoint);

    Task<SpeedTestOutcome> measureDownload(SpeedTestConfiguration configuration, SpeedTestProgress progress) override;
    Task<SpeedTestOutcome> measureUpload(SpeedTestConfiguration configuration, SpeedTestProgress progress) override;

private:
    /// The chunk's bytes.
    using ChunkOutcome = std::expected<std::int64_t, SpeedTestError>;

    Task<ChunkOutcome> downloadChunk(SpeedTestConfiguration configuration);
    Task<ChunkOutcome> uploadChunk(SpeedTestConfiguration configuration, std::shared_ptr<const std::string> body);
    Task<SpeedTestOutcome> transfer(std::vector<Task<ChunkOutcome>> chunks, MonotonicTime start,
                                    SpeedTestProgress progress);

    MainLoop& loop_;
    URLSession& session_;
    const SpeedTestEndpoint endpoint_;
};

} // namespace tolvo

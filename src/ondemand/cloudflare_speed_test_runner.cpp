#include "ondemand/cloudflare_speed_test_runner.h"

#include "core/async/task_group.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tolvo {

namespace {

constexpr double shortestElapsedSeconds = 0.001;
constexpr char uploadByte = '\xA5';
/// The body is this block over and over, so that its size costs neither memory nor time.
constexpr std::size_t uploadBlockBytes = 65536;

/// A server may send more than it was asked for, but not for ever.
std::size_t downloadLimit(std::int64_t chunkSizeBytes) {
    constexpr std::int64_t largestChunk = 1'000'000'000'000;
    return static_cast<std::size_t>(std::clamp<std::int64_t>(chunkSizeBytes, 1, largestChunk)) * 4;
}

SpeedTestTransfer measured(std::int64_t totalBytes, Seconds elapsed) {
    const double seconds = std::max(elapsed.count(), shortestElapsedSeconds);
    return {totalBytes, static_cast<double>(totalBytes) * 8 / (seconds * 1e6), seconds};
}

/// A slow link may take its time: in an hour, even 75 kbit/s carry a whole direction. A server that gives a byte now
/// and then never stands still, and ends here.
constexpr double longestChunkSeconds = 3600;

/// What is wrong with a chunk's answer, if something is.
std::optional<SpeedTestError> errorIn(const URLSessionOutcome& outcome) {
    if (!outcome && outcome.error().kind != URLSessionError::Kind::NotHTTP)
        return outcome.error();
    if (!outcome || outcome->statusCode < 200 || outcome->statusCode > 299)
        return SpeedTestRunnerError::InvalidResponse;
    return std::nullopt;
}

} // namespace

CloudflareSpeedTestRunner::CloudflareSpeedTestRunner(MainLoop& loop, URLSession& session, SpeedTestEndpoint endpoint)
    : loop_(loop), session_(session), endpoint_(std::move(endpoint)) {}

Task<SpeedTestOutcome> CloudflareSpeedTestRunner::measureDownload(SpeedTestConfiguration configuration,
                                                                  SpeedTestProgress progress) {
    if (configuration.downloadChunks < 1)
        co_return std::unexpected(SpeedTestRunnerError::InvalidRequest);
    const MonotonicTime start = loop_.now();
    std::vector<Task<ChunkOutcome>> chunks;
    chunks.reserve(static_cast<std::size_t>(configuration.downloadChunks));
    for (std::int64_t i = 0; i < configuration.downloadChunks; ++i)
        chunks.push_back(downloadChunk(configuration));
    co_return co_await transfer(std::move(chunks), start, std::move(progress));
}

Task<SpeedTestOutcome> CloudflareSpeedTestRunner::measureUpload(SpeedTestConfiguration configuration,
                                                                SpeedTestProgress progress) {
    if (configuration.uploadChunks < 1 || configuration.uploadChunkSizeBytes < 0 || !endpoint_.uploadURL)
        co_return std::unexpected(SpeedTestRunnerError::InvalidRequest);
    const MonotonicTime start = loop_.now();
    const auto body = std::make_shared<const std::string>(uploadBlockBytes, uploadByte);
    std::vector<Task<ChunkOutcome>> chunks;
    chunks.reserve(static_cast<std::size_t>(configuration.uploadChunks));
    for (std::int64_t i = 0; i < configuration.uploadChunks; ++i)
        chunks.push_back(uploadChunk(configuration, body));
    co_return co_await transfer(std::move(chunks), start, std::move(progress));
}

Task<SpeedTestOutcome> CloudflareSpeedTestRunner::transfer(std::vector<Task<ChunkOutcome>> chunks, MonotonicTime start,
                                                           SpeedTestProgress progress) {
    TaskGroup<ChunkOutcome> group(co_await currentContext());
    for (Task<ChunkOutcome>& chunk : chunks)
        group.add(std::move(chunk));
    std::int64_t totalBytes = 0;
    double finishedCount = 0;
    while (const auto chunk = co_await group.next()) {
        if (!*chunk)
            co_return std::unexpected(chunk->error());
        totalBytes += **chunk;
        ++finishedCount;
        co_await progress(finishedCount / static_cast<double>(chunks.size()));
    }
    if (totalBytes < 1)
        co_return std::unexpected(SpeedTestRunnerError::NoDataTransferred);
    co_return measured(totalBytes, loop_.now() - start);
}

Task<CloudflareSpeedTestRunner::ChunkOutcome>
CloudflareSpeedTestRunner::downloadChunk(SpeedTestConfiguration configuration) {
    auto url = endpoint_.downloadURLFactory(configuration.downloadChunkSizeBytes);
    if (!url)
        co_return std::unexpected(SpeedTestRunnerError::InvalidRequest);
    URLRequest request{
        .url = std::move(*url), .timeout = configuration.requestTimeout, .totalTimeout = longestChunkSeconds};
    request.responseBody = ResponseBody::Count;
    request.bodyLimit = downloadLimit(configuration.downloadChunkSizeBytes);
    request.connectionUse = ConnectionUse::Own;
    const URLSessionOutcome outcome = co_await session_.data(std::move(request));
    if (const auto error = errorIn(outcome))
        co_return std::unexpected(*error);
    co_return outcome->receivedBodyBytes;
}

Task<CloudflareSpeedTestRunner::ChunkOutcome>
CloudflareSpeedTestRunner::uploadChunk(SpeedTestConfiguration configuration, std::shared_ptr<const std::string> body) {
    URLRequest request{.url = *endpoint_.uploadURL,
                       .method = HTTPMethod::Post,
                       .timeout = configuration.requestTimeout,
                       .totalTimeout = longestChunkSeconds};
    request.headers = {{"Content-Type", "application/octet-stream"}};
    request.body = std::move(body);
    request.bodyLength = configuration.uploadChunkSizeBytes;
    request.responseBody = ResponseBody::Count;
    request.connectionUse = ConnectionUse::Own;
    const URLSessionOutcome outcome = co_await session_.data(std::move(request));
    if (const auto error = errorIn(outcome))
        co_return std::unexpected(*error);
    co_return configuration.uploadChunkSizeBytes;
}

} // namespace tolvo

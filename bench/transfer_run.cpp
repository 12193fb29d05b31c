// One direction of a speed test, measured by one of two ways of moving the bytes, as one line of figures:
//   transfer_run ours|bare down|up BASE-URL CHUNK-BYTES CHUNKS
// Run by transfer_bench.py, which puts the ways side by side.
#include "core/async/task_scope.h"
#include "ondemand/cloudflare_speed_test_runner.h"
#include "platform/linux/curl_url_session.h"
#include "platform/linux/poll_loop.h"

#include <curl/curl.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvo {
namespace {

struct Order {
    bool isDownload;
    std::string baseURL;
    std::int64_t chunkBytes;
    std::int64_t chunks;
};

struct Figures {
    double bytes = 0;
    double seconds = 0;
    double longestHoldMilliseconds = 0;
};

/// Looks each millisecond how much the main thread has worked since the last look, whatever else the machine does.
class HoldWatch {
public:
    explicit HoldWatch(MainLoop& loop) : loop_(loop) { look(); }
    double longestMilliseconds() const { return longest_; }

private:
    void look() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        const double worked = static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
        longest_ = std::max(longest_, worked - std::exchange(worked_, worked));
        timer_ = loop_.after(Seconds(0.001), [this] { look(); });
    }

    MainLoop& loop_;
    double worked_ = std::numeric_limits<double>::max();
    double longest_ = 0;
    LoopRegistration timer_;
};

Task<void> noProgress(double) {
    co_return;
}

Task<void> measure(PollLoop& loop, SpeedTesting& runner, Order order, Figures& figures) {
    const SpeedTestConfiguration configuration{order.chunkBytes, order.chunks, order.chunkBytes, order.chunks};
    const auto outcome = order.isDownload ? co_await runner.measureDownload(configuration, noProgress)
                                          : co_await runner.measureUpload(configuration, noProgress);
    if (outcome)
        figures = {static_cast<double>(outcome->totalBytes), outcome->elapsedSeconds};
    loop.quit();
}

Figures ours(const Order& order) {
    Figures figures;
    PollLoop loop;
    CurlURLSession session(loop, {"Tolvo/bench", CertificateStore::ofSystem()});
    CloudflareSpeedTestRunner runner(loop, session, speedTestEndpoint(URL::parse(order.baseURL)));
    const HoldWatch watch(loop);
    TaskScope tasks(loop);
    tasks.start(measure(loop, runner, order, figures));
    loop.run();
    figures.longestHoldMilliseconds = watch.longestMilliseconds();
    return figures;
}

std::size_t drop(char*, std::size_t, std::size_t count, void*) {
    return count;
}

void fulfil(CURLM* multi) {
    int runningCount = 1;
    while (runningCount > 0) {
        curl_multi_perform(multi, &runningCount);
        if (runningCount > 0)
            curl_multi_poll(multi, nullptr, 0, 1000, nullptr);
    }
}

Figures bare(const Order& order) {
    const auto start = std::chrono::steady_clock::now();
    const std::string body(order.isDownload ? 0 : static_cast<std::size_t>(order.chunkBytes), '\xA5');
    const std::string url =
        order.baseURL + (order.isDownload ? "/__down?bytes=" + std::to_string(order.chunkBytes) : "/__up");
    CURLM* const multi = curl_multi_init();
    curl_slist* const headers = curl_slist_append(nullptr, "Expect:");
    std::vector<CURL*> handles(static_cast<std::size_t>(order.chunks));
    for (CURL*& handle : handles) {
        handle = curl_easy_init();
        curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
        curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, drop);
        curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
        if (!order.isDownload) {
            curl_easy_setopt(handle, CURLOPT_POSTFIELDS, body.data());
            curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        }
        curl_multi_add_handle(multi, handle);
    }
    fulfil(multi);
    Figures figures;
    for (CURL* const handle : handles) {
        curl_off_t count = 0;
        curl_easy_getinfo(handle, order.isDownload ? CURLINFO_SIZE_DOWNLOAD_T : CURLINFO_SIZE_UPLOAD_T, &count);
        figures.bytes += static_cast<double>(count);
    }
    figures.seconds = Seconds(std::chrono::steady_clock::now() - start).count();
    return figures;
}

void print(const Figures& figures) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](timeval time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    std::printf("MB=%.0f MB/s=%.1f cpu_s/GB=%.3f rss_MB=%.0f longest_hold_ms=%.2f\n", figures.bytes / 1e6,
                figures.bytes / 1e6 / figures.seconds,
                (seconds(usage.ru_utime) + seconds(usage.ru_stime)) / (figures.bytes / 1e9),
                static_cast<double>(usage.ru_maxrss) / 1024, figures.longestHoldMilliseconds);
}

} // namespace
} // namespace tolvo

int main(int argc, char** argv) {
    if (argc != 6)
        return 2;
    const std::string_view way = argv[1];
    const tolvo::Order order{std::string_view(argv[2]) == "down", argv[3], std::atoll(argv[4]), std::atoll(argv[5])};
    const tolvo::Figures figures = way == "ours" ? tolvo::ours(order) : tolvo::bare(order);
    if (figures.bytes < static_cast<double>(order.chunkBytes * order.chunks))
        return 1;
    tolvo::print(figures);
}

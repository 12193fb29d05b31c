// Looks for a captive portal over the real network, again and again, and prints verdict, time and CPU of each check:
//   portal_bench [CHECKS [SECONDS-BETWEEN]]
// Meant for a lab, where the default probe hosts are answered by a server of ours.
#include "core/async/sleep.h"
#include "core/async/task_scope.h"
#include "monitors/url_session_captive_portal_checker.h"
#include "monitors/url_session_captive_portal_probe_fetcher.h"
#include "platform/linux/curl_url_session.h"
#include "platform/linux/poll_loop.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace tolvo {
namespace {

double cpuMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void print(const CaptivePortalDetectionMeasurement& measurement, Seconds elapsed, double cpu) {
    std::printf("%s portal=%s probe=%s seconds=%.3f cpu_ms=%.2f\n",
                measurement.didSucceed ? rawValue(measurement.reason).data() : "failed",
                measurement.portalURL ? measurement.portalURL->text().c_str() : "-",
                measurement.probeURL ? measurement.probeURL->text().c_str() : "-", elapsed.count(), cpu);
    std::fflush(stdout);
}

Task<void> checkRepeatedly(PollLoop& loop, CaptivePortalChecking& checker, int count, double interval) {
    for (int i = 0; i < count; ++i) {
        const MonotonicTime start = loop.now();
        const double cpuBefore = cpuMilliseconds();
        const auto measurement = co_await checker.check(3.5);
        print(measurement, loop.now() - start, cpuMilliseconds() - cpuBefore);
        co_await sleepFor(Seconds(interval));
    }
    loop.quit();
}

} // namespace
} // namespace tolvo

int main(int argc, char** argv) {
    using namespace tolvo;
    PollLoop loop;
    CurlURLSession session(loop, {"Tolvo/bench", CertificateStore::ofSystem()});
    URLSessionCaptivePortalProbeFetcher fetcher(session);
    URLSessionCaptivePortalChecker checker(fetcher);
    TaskScope tasks(loop);
    tasks.start(checkRepeatedly(loop, checker, argc > 1 ? std::atoi(argv[1]) : 1, argc > 2 ? std::atof(argv[2]) : 0));
    loop.run();
}

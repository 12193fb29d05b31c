#include "core/nw_path_network_change_observer.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

struct ManualPathMonitor final : PathMonitor {
    void start(Handler pathUpdateHandler) override { handler = std::move(pathUpdateHandler); }
    void cancel() override { handler = nullptr; }
    Handler handler;
};

TEST(NetworkChange, OnlyAChangedSignatureAfterTheFirstUpdateIsTold) {
    // The path is there (s), with Wi-Fi (w), Ethernet (e), a modem (c), a tunnel (o); R is after a restart.
    const std::pair<std::string_view, int> updates[] = {{"sw", 0},  {"sw", 0},  {"swe", 1}, {"swc", 2},
                                                        {"swo", 3}, {"sw", 4},  {"w", 5},   {"", 6},
                                                        {"", 6},    {"Rse", 6}, {"se", 6},  {"sw", 7}};
    ManualLoop loop;
    ManualPathMonitor monitor;
    int changes = 0;
    {
        NWPathNetworkChangeObserver observer(loop, monitor);
        observer.onNetworkChange = [&] { ++changes; };
        for (const auto& [update, expected] : updates) {
            const auto has = [update](char sign) { return update.contains(sign); };
            if (has('R'))
                observer.stopObserving();
            observer.startObserving();
            const auto status = has('s') ? PathStatus::Satisfied : PathStatus::Unsatisfied;
            monitor.handler({status, has('w'), has('e'), has('c'), has('o')});
            loop.runUntilIdle();
            EXPECT_EQ(changes, expected) << update;
        }
        monitor.handler({});
    }
    loop.runUntilIdle();
    EXPECT_EQ(changes, 7) << "told after the end";
}

} // namespace
} // namespace tolvo::testing

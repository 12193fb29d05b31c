#include "core/task_sleeper.h"
#include "ondemand/channel_scan_monitor.h"
#include "tests/support/manual_loop.h"
#include "tests/support/manual_scanner.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

class ChannelScanMonitorTest : public ::testing::Test {
protected:
    void start() {
        monitor.toggleScan();
        loop.runUntilIdle();
    }
    /// Ends the scan that is going, and lets the pause after it pass.
    void finishPass(WiFiScanOutcome outcome = std::vector<WiFiScannedNetwork>{}) {
        scanner.finish(std::move(outcome));
        loop.advance(0.35);
    }

    ManualLoop loop;
    TaskSleeper sleeper;
    ManualScanner scanner;
    std::optional<WiFiSnapshot> current;
    ChannelScanMonitor monitor{loop, {}, scanner, [this] { return current; }, sleeper, [] { return WallTime(); }};
};

TEST_F(ChannelScanMonitorTest, ThreePassesWithPauses) {
    start();
    monitor.startScan();
    scanner.finish(std::vector<WiFiScannedNetwork>{});
    loop.advance(0.34);
    EXPECT_EQ(monitor.completedPasses.value(), 1);
    EXPECT_EQ(scanner.scanCount, 1) << "neither a second start nor the pause has begun a scan";
    loop.advance(0.01);
    EXPECT_EQ(scanner.scanCount, 2);
    finishPass();
    current.emplace().channelNumber = 40;
    current->band = WiFiBand::FiveGigahertz;
    scanner.finish(std::vector<WiFiScannedNetwork>{});
    monitor.cancelScan();
    loop.runUntilIdle();
    EXPECT_FALSE(monitor.isScanning.value());
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt) << "after the last scan a cancellation is too late";
    EXPECT_EQ(monitor.latestResult.value()->suggestedChannelNumber, 40) << "the link is read after the last pass";
}

TEST_F(ChannelScanMonitorTest, CancellationAndFailureKeepTheLastResult) {
    using Kind = WiFiNetworkScannerError::Kind;
    start();
    for (int pass = 0; pass < 3; ++pass)
        finishPass();
    const auto result = monitor.latestResult.value();
    ASSERT_TRUE(result);
    const auto fail = [this](Kind kind) { finishPass(std::unexpected(WiFiNetworkScannerError{kind, "busy"})); };
    struct Case {
        std::string message;
        std::int64_t completedPasses;
        std::function<void()> act;
    };
    const Case cases[] = {
        {"Channel scan cancelled.", 0, [&] { monitor.toggleScan(); }},
        {"Channel scan cancelled.", 1, [&] { finishPass(), monitor.cancelScan(); }},
        {"Channel scan failed: busy", 1, [&] { finishPass(), fail(Kind::PlatformFailure); }},
        {"Channel scan failed: No Wi-Fi interface is available.", 0, [&] { fail(Kind::InterfaceUnavailable); }},
    };
    for (const auto& [message, completedPasses, act] : cases) {
        start();
        EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt) << "cleared at the start";
        act();
        loop.runUntilIdle();
        EXPECT_EQ(monitor.lastErrorMessage.value(), message);
        EXPECT_EQ(monitor.completedPasses.value(), completedPasses) << message;
        EXPECT_FALSE(monitor.isScanning.value()) << message;
        EXPECT_EQ(monitor.latestResult.value(), result) << message;
    }
}

} // namespace
} // namespace tolvo::testing

#include "core/task_sleeper.h"
#include "ondemand/channel_scan_monitor.h"
#include "tests/support/manual_loop.h"
#include "tests/support/manual_scanner.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

class ChannelScanMonitorTest : public ::testing::Test {
protected:
    void finishScan(WiFiScanOutcome outcome = std::vector<WiFiScannedNetwork>{}) {
        scanner.finish(std::move(outcome));
        loop.runUntilIdle();
    }
    void start() {
        monitor.startScan();
        loop.runUntilIdle();
    }
    /// From a start to its end.
    void runThrough() {
        start();
        for (int pass = 0; pass < 3; ++pass) {
            finishScan();
            loop.advance(0.35);
        }
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
    loop.runUntilIdle();
    EXPECT_EQ(scanner.scanCount, 1) << "a second start has no effect";
    EXPECT_EQ(monitor.totalPasses.value(), 3);
    finishScan();
    EXPECT_EQ(monitor.completedPasses.value(), 1);
    loop.advance(0.34);
    EXPECT_EQ(scanner.scanCount, 1);
    loop.advance(0.01);
    EXPECT_EQ(scanner.scanCount, 2);
    finishScan();
    loop.advance(0.35);
    current.emplace().channelNumber = 40;
    current->band = WiFiBand::FiveGigahertz;
    std::vector<bool> couldStartAgain;
    const auto subscription = monitor.isScanning.subscribe([&](bool isScanning) {
        if (!isScanning)
            couldStartAgain.push_back(monitor.latestResult.value().has_value());
    });
    finishScan();
    EXPECT_EQ(couldStartAgain, std::vector{true}) << "the result is there before the flag goes";
    EXPECT_FALSE(monitor.isScanning.value());
    EXPECT_EQ(monitor.latestResult.value()->suggestedChannelNumber, 40) << "the link is read after the last pass";
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt);
}

TEST_F(ChannelScanMonitorTest, CancellationAndFailureKeepTheLastResult) {
    monitor.cancelScan();
    runThrough();
    const auto result = monitor.latestResult.value();
    ASSERT_TRUE(result);
    using Kind = WiFiNetworkScannerError::Kind;
    const auto fail = [this](Kind kind, std::string description) {
        finishScan();
        loop.advance(0.35);
        finishScan(std::unexpected(WiFiNetworkScannerError{kind, std::move(description)}));
    };
    struct Case {
        std::string message;
        std::int64_t completedPasses;
        std::function<void()> act;
    };
    const Case cases[] = {
        {"Channel scan cancelled.", 0, [&] { monitor.toggleScan(); }},
        {"Channel scan cancelled.", 1, [&] { finishScan(), monitor.cancelScan(); }},
        {"Channel scan failed: busy", 1, [&] { fail(Kind::PlatformFailure, "busy"); }},
        {"Channel scan failed: No Wi-Fi interface is available.", 1, [&] { fail(Kind::InterfaceUnavailable, ""); }},
    };
    for (const auto& [message, completedPasses, act] : cases) {
        monitor.toggleScan();
        loop.runUntilIdle();
        EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt) << "cleared at the start";
        act();
        loop.runUntilIdle();
        EXPECT_EQ(monitor.lastErrorMessage.value(), message);
        EXPECT_EQ(monitor.completedPasses.value(), completedPasses) << message;
        EXPECT_FALSE(monitor.isScanning.value()) << message;
        EXPECT_EQ(monitor.latestResult.value(), result) << message;
    }
    runThrough();
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt) << "a run after a failure is a whole one";
}

TEST_F(ChannelScanMonitorTest, CancelledBetweenTheLastScanAndItsResume) {
    start();
    for (int pass = 0; pass < 2; ++pass) {
        finishScan();
        loop.advance(0.35);
    }
    scanner.finish(std::vector<WiFiScannedNetwork>{});
    monitor.cancelScan();
    loop.runUntilIdle();
    EXPECT_TRUE(monitor.latestResult.value());
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt);
}

} // namespace
} // namespace tolvo::testing

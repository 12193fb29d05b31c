#include "presentation/dashboard/dashboard_content.h"

#include "presentation/rows/sparkline.h"
#include "tests/support/dashboard_values.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

class Dashboard : public ::testing::Test {
protected:
    DashboardContent content(const NumberFormat& format = {}) { return dashboardContent(values.sources(), format); }
    std::string firstMessage() {
        const auto messages = content().messages;
        return messages.empty() ? "" : messages.front().text;
    }

    DashboardValues values;
};

TEST_F(Dashboard, SaysWhyThereIsNothingToSee) {
    EXPECT_EQ(firstMessage(), "Connected. Waiting for the first Wi-Fi samples...");
    values.latestSnapshot.set(exampleWiFiSnapshot());
    EXPECT_EQ(firstMessage(), "");
    values.isConnected.set(false);
    EXPECT_EQ(firstMessage(), "No Wi-Fi connection detected. Connect to a network to see diagnostics.");
    values.isMonitoringEnabled.set(false);
    EXPECT_EQ(firstMessage(), "Monitoring active in background mode.") << "paused: the lifecycle's own sentence";
    EXPECT_EQ(content().monitoringLabel, "Paused");
}

TEST_F(Dashboard, NamesThePortalOnlyWhileMonitoring) {
    values.latestSnapshot.set(exampleWiFiSnapshot());
    CaptivePortalStatus status;
    status.isCaptivePortal = true;
    values.captivePortalStatus.set(status);
    EXPECT_EQ(content().messages,
              (std::vector<InlineMessageRow>{
                  {"Captive portal detected. Login may be required before internet access works.", Tone::Red}}));
    status.portalURL = URL::parse("https://login.example/");
    values.captivePortalStatus.set(status);
    EXPECT_EQ(firstMessage(), "Captive portal detected. Login may be required at https://login.example/.");
    values.isMonitoringEnabled.set(false);
    EXPECT_EQ(content().messages.size(), 1U);
    EXPECT_EQ(content().messages.front().accentColor, Tone::Orange);
}

TEST_F(Dashboard, ShowsValuesInTheirUnitsAndADashForWhatIsAbsent) {
    const auto texts = [&](const NumberFormat& format) {
        const DashboardContent c = content(format);
        std::vector<std::string> all;
        for (const auto* rows : {&c.networkRows, &c.latencyRows}) {
            for (const MetricTrendRow& row : *rows)
                all.push_back(row.title + "=" + row.value);
        }
        all.push_back(c.packetLossRow.value);
        all.push_back(c.dnsDomainRow.value + " " + c.dnsLookupRow.value);
        return all;
    };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(texts({}), (Texts{"Link Rate=—", "SNR=—", "Signal=—", "Noise=—", "Router Ping=—", "Internet Ping=—",
                                "Jitter=—", "—", "— —"}));
    values.latestSnapshot.set(exampleWiFiSnapshot());
    values.routerResult.set(PingResult{PingTarget::Router, {}, 1.25, 0.5, 0, true});
    values.internetResult.set(PingResult{PingTarget::Internet, {}, 1234.56, 7.0, 50, true});
    values.dnsResult.set(DNSResult{"a.example", {}, 12.0, true});
    values.isRouterIgnored.set(true);
    EXPECT_EQ(texts({","}),
              (Texts{"Link Rate=866 Mbps", "SNR=40 dB", "Signal=-52 dBm", "Noise=-92 dBm", "Router Ping=ICMP blocked",
                     "Internet Ping=1234,6 ms", "Jitter=7,0 ms", "50%", "a.example 12,0 ms"}));
}

TEST_F(Dashboard, NetworkHeaderTellsWhatIsKnown) {
    WiFiSnapshot snapshot = exampleWiFiSnapshot();
    values.latestSnapshot.set(snapshot);
    EXPECT_EQ(content().network, (WiFiNetworkHeader{"Home", true, "5 GHz", "Channel 36 (5 GHz)"}));
    snapshot.ssid = "";
    snapshot.band.reset();
    values.latestSnapshot.set(snapshot);
    EXPECT_EQ(content().network, (WiFiNetworkHeader{"Wi-Fi Name Unavailable", true, std::nullopt, "Channel 36"}));
    snapshot.channelNumber.reset();
    values.latestSnapshot.set(snapshot);
    EXPECT_EQ(content().network.channelLine, "Channel unavailable");
}

TEST_F(Dashboard, SamplesSkipEntriesWithoutTheField) {
    WiFiSnapshot withoutRate = exampleWiFiSnapshot();
    withoutRate.linkRateMbps.reset();
    values.wifiHistory.set({exampleWiFiSnapshot(), withoutRate});
    values.routerHistory.set({PingResult{PingTarget::Router, {}, {}, {}, 100, false},
                              PingResult{PingTarget::Router, {}, 3.0, 1.0, 0, true}});
    EXPECT_EQ(content().networkRows[0].samples, std::vector<double>{866});
    EXPECT_EQ(content().networkRows[2].samples, (std::vector<double>{-52, -52}));
    EXPECT_EQ(content().latencyRows[0].samples, std::vector<double>{3});
}

TEST(LinkRateDomain, KeepsItsSpanWithinItsLimits) {
    struct Row {
        std::vector<double> samples;
        ValueRange domain;
    };
    for (const Row& row : {Row{{}, {0, 1200}}, Row{{100, 120}, {70, 150}}, Row{{10}, {0, 80}},
                           Row{{1190}, {1120, 1200}}, Row{{100, 500}, {100, 500}}, Row{{0, 2400}, {0, 1200}}})
        EXPECT_EQ(linkRateDomain(row.samples), row.domain) << row.domain.lower << " " << row.domain.upper;
}

TEST(Sparkline, LimitsSamplesToTheDomain) {
    using Heights = std::vector<double>;
    const auto heights = [](Heights samples, std::optional<ValueRange> domain) {
        return sparklineHeights(samples, domain);
    };
    EXPECT_EQ(heights({-20, -95, -120}, ValueRange{-95, -30}), (Heights{1, 0, 0}));
    EXPECT_EQ(heights({5}, ValueRange{0, 10}), (Heights{0.5, 0.5}));
    EXPECT_EQ(heights({3, 9}, ValueRange{4, 4}), (Heights{0.5, 0.5}));
    EXPECT_EQ(heights({7, 7}, std::nullopt), (Heights{0.5, 0.5}));
    EXPECT_EQ(heights({}, std::nullopt), Heights{});
    EXPECT_EQ(sparklinePoints(Heights{0, 10, 5}, std::nullopt, 100, 20),
              (std::vector<SparklinePoint>{{0, 20}, {50, 0}, {100, 10}}));
}

} // namespace
} // namespace tolvo::testing

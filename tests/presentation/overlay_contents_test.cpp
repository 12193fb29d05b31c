#include "presentation/captive_portal_overlay/captive_portal_overlay_content.h"
#include "presentation/connection_overlay/connection_overlay_content.h"
#include "presentation/settings/app_build_metadata_display_info.h"
#include "tests/support/panel_values.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

ConnectionPressureResult connections(std::int64_t established, std::int64_t timeWait, std::int64_t closeWait) {
    return {{}, {established, timeWait, closeWait}, SignalQuality::Warning};
}

TEST(ConnectionOverlay, CountsAndTheirSums) {
    const auto result = connections(3, 4, 5);
    const ConnectionOverlayContent content = connectionOverlayContent(result, std::vector{result, result}, {});
    std::string rows;
    for (const MetricTrendRow& row : content.rows)
        rows += row.title + " " + row.value + " " + std::to_string(row.samples.size()) + "\n";
    EXPECT_EQ(rows, "Established 3 2\nTIME_WAIT 4 2\nCLOSE_WAIT 5 2\nTotal 12 2\nOrphaned 9 2\n");
    EXPECT_EQ(content.statusText, "Connection pressure is currently warning.");
    EXPECT_EQ(content.quality, (Badge{"Warning", Tone::Orange}));
    EXPECT_EQ(connectionOverlayContent(result, {}, "netstat failed").statusText, "netstat failed");
    const ConnectionOverlayContent empty = connectionOverlayContent({}, {}, {});
    EXPECT_EQ(empty.statusText, "Collecting TCP connection state counts from netstat.");
    EXPECT_EQ(empty.rows[3].value, "—");
    EXPECT_FALSE(empty.quality);
}

TEST(ConnectionOverlay, RowsShareADomainAboveTheLargestTotal) {
    struct Row {
        std::vector<ConnectionPressureResult> history;
        double upper;
    };
    for (const Row& row : {Row{{}, 1000}, Row{{connections(10, 0, 0)}, 20}, Row{{connections(50, 49, 1)}, 120},
                           Row{{connections(101, 0, 0), connections(1, 0, 0)}, 122}}) {
        for (const MetricTrendRow& shown : connectionOverlayContent({}, row.history, {}).rows)
            EXPECT_EQ(shown.yDomain, (ValueRange{0, row.upper})) << shown.title;
    }
}

TEST(CaptivePortalOverlay, SaysWhatWasFoundAndHow) {
    struct Row {
        std::optional<CaptivePortalStatus> status;
        std::string texts;
    };
    using enum CaptivePortalDetectionReason;
    const auto url = URL::parse("https://login.example/?a=1");
    const WallTime time{std::chrono::seconds(90)};
    const std::vector<Row> rows{
        {std::nullopt, "Running periodic captive portal probes.|Unknown|Awaiting probes|—|—"},
        {CaptivePortalStatus{time, false, {}, {}, None},
         "No captive portal detected.|Open Internet|No anomalies|second 90|—"},
        {CaptivePortalStatus{time, true, url, {}, Redirect},
         "Captive portal detected via an HTTP redirect.|Captive|HTTP redirect detected|second 90|"
         "https://login.example/?a=1"},
        {CaptivePortalStatus{time, true, {}, {}, ContentInjection},
         "Captive portal detected via unexpected probe content.|Captive|Probe content mismatch|second 90|—"},
        {CaptivePortalStatus{time, true, {}, {}, None},
         "Captive portal detected via no anomalies.|Captive|No anomalies|second 90|—"},
    };
    for (const Row& row : rows) {
        const auto content = captivePortalOverlayContent(row.status, {}, FixedLocaleFormats());
        std::string texts = content.statusText;
        for (const MetricRow& shown : content.rows)
            texts += "|" + shown.value;
        EXPECT_EQ(texts + "|" + content.portalURL.value, row.texts);
    }
    EXPECT_EQ(captivePortalOverlayContent(rows[2].status, "offline", FixedLocaleFormats()).statusText, "offline");
}

TEST(BuildMetadata, FallsBackForWhatTheBuildDidNotFillIn) {
    const FixedLocaleFormats formats;
    using Facts = BundleBuildFacts;
    const WallTime written = std::chrono::sys_days(std::chrono::year(2026) / 3 / 9);
    const std::pair<Facts, AppBuildMetadataDisplayInfo> rows[] = {
        {Facts{}, {"v0.0.1 (1)", "n/a", "n/a"}},
        {Facts{" 1.4 \n", "52", "f00", "2026-01-31", written}, {"v1.4 (52)", "f00", "31.1.2026"}},
        {Facts{"$(VERSION)", "n/a", "$(BUILD_ID)", " ", written}, {"v0.0.1 (1)", "n/a", "9.3.2026"}},
        {Facts{"2", "3", "N/A", "in spring", written}, {"v2 (3)", "N/A", "in spring"}},
    };
    for (const auto& [facts, shown] : rows)
        EXPECT_EQ(appBuildMetadataDisplayInfo(facts, formats), shown) << shown.version;
}

TEST(BuildMetadata, ReadsReleaseDatesAndLeavesOtherTextsAlone) {
    const FixedLocaleFormats formats;
    const std::pair<const char*, const char*> rows[] = {
        {"2026-01-31T23:30:00.250Z", "31.1.2026"},
        {"2026-01-31T23:30:00Z", "31.1.2026"},
        {"2026-01-31T23:30:00-01:00", "1.2.2026"},
        {"2026-02-29", "2026-02-29"},
        {"2026-1-31", "2026-1-31"},
        {"2026-01-31T25:00:00Z", "2026-01-31T25:00:00Z"},
        {"2026-01-31T10:00:00", "2026-01-31T10:00:00"},
        {"2026-01-31T10:00:00.Z", "2026-01-31T10:00:00.Z"},
        {"2026-01-31 and more", "2026-01-31 and more"},
        {"99999999999-01-01", "99999999999-01-01"},
        {"-026-01-31", "-026-01-31"},
    };
    for (const auto& [text, shown] : rows) {
        BundleBuildFacts facts;
        facts.releaseDate = text;
        EXPECT_EQ(appBuildMetadataDisplayInfo(facts, formats).releaseDate, shown);
    }
}

} // namespace
} // namespace tolvo::testing

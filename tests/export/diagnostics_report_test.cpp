#include "export/diagnostics_export_json.h"
#include "tests/support/export_values.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <limits>

namespace tolvo::testing {
namespace {

std::string textOf(const DiagnosticsExportInput& input) {
    return jsonString(makeDiagnosticsExportReport(input)).value();
}

std::string replaced(std::string text, std::string_view old, std::string_view by) {
    const auto position = text.find(old);
    EXPECT_NE(position, std::string::npos) << old;
    return text.replace(std::min(position, text.size()), old.size(), by);
}

TEST(DiagnosticsReport, NothingMeasured) {
    DiagnosticsExportInput input;
    input.exportedAt = exportDate();
    std::string text = textOf(input);
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(text, R"({"app":{"name":"Tolvo"},"captivePortal":{"status":"unavailable"},)"
                    R"("channelScan":{"status":"unavailable"},"connectionPressure":{"status":"unavailable"},)"
                    R"("exportedAt":"2026-01-31T09:30:05Z","latency":{"dnsLookup":{"status":"unavailable"},)"
                    R"("internetPing":{"status":"unavailable"},"routerPing":{"status":"unavailable"}},)"
                    R"("runtime":{"batteryFriendlyModeEnabled":false,"healthState":"disconnected",)"
                    R"("monitoringEnabled":false},"schemaVersion":2,)"
                    R"("speedTest":{"phase":"idle","status":"unavailable"},"wifi":{"status":"unavailable"}})");
}

TEST(DiagnosticsReport, ValuesThatAreEasilyWrittenWrong) {
    const std::string text = textOf(fullInput());
    const char* const parts[] = {
        R"("ssid" : "café \"\u0001\")",
        R"("orphanedCount" : 9)",
        R"("totalCount" : 12)",
        R"("timeWaitCount" : 4)",
        R"("portalURL" : "http:\/\/portal.example\/login")",
        R"("uploadMbps" : 1.7976931348623157e+308)",
        R"("currentChannelInterferenceScore" : 0.1)",
        R"("downloadBufferbloatGrade" : "B")",
        R"("vpnActive" : true)",
        "\"didSucceed\" : false,\n        \"packetLossPercent\" : 100\n      },\n      \"status\" : \"available\"",
        "\"errorMessage\" : \"Connection monitor failed to read TCP states.\",\n    \"status\" : \"available\""};
    for (const char* part : parts)
        EXPECT_NE(text.find(part), std::string::npos) << part << "\nin\n" << text;
    for (const char* part : {"null", "interfaceName", "Ratio", "\"channels\""})
        EXPECT_EQ(text.find(part), std::string::npos) << part;
}

TEST(DiagnosticsReport, WhatCannotBeEncodedIsAnError) {
    auto report = makeDiagnosticsExportReport(fullInput());
    report.channelScan.errorMessage = "cut \xe2\x80";
    const auto notText = jsonString(report);
    ASSERT_FALSE(notText);
    EXPECT_EQ(notText.error().message, "Unable to convert diagnostics JSON data to UTF-8 string.");
    EXPECT_NE(notText.error().bytes.find("cut \xe2\x80\""), std::string::npos);
    report.speedTest.data->downloadMbps = std::numeric_limits<double>::infinity();
    EXPECT_EQ(jsonString(report).error().codingPath, (std::vector<std::string>{"speedTest", "data", "downloadMbps"}));
}

class ReportSchemaTest : public ::testing::Test {
protected:
    void add(const std::string& text) {
        const std::string path = prefix + std::to_string(++count) + ".json";
        std::ofstream(path) << text;
        paths += " " + path;
    }
    int validate() const { return WEXITSTATUS(std::system((REPORT_VALIDATOR + paths).c_str())); }

    const std::string prefix = ::testing::TempDir() + ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::string paths;
    int count = 0;
};

TEST_F(ReportSchemaTest, RealReportsAreValid) {
    add(textOf({}));
    add(textOf(fullInput()));
    auto input = fullInput();
    input.channelScanResult.reset();
    input.channelScanLastErrorMessage = "Channel scan timed out.";
    input.diagnosticsSnapshot->wifiSnapshot->ssid = input.diagnosticsSnapshot->wifiSnapshot->bssid = std::nullopt;
    add(textOf(input));
    EXPECT_EQ(validate(), 0);
}

TEST_F(ReportSchemaTest, BrokenReportsAreNot) {
    const std::string text = textOf(fullInput());
    add(replaced(text, "\"schemaVersion\" : 2", "\"schemaVersion\" : 3"));
    add(replaced(text, "\"status\" : \"available\"", "\"status\" : \"unavailable\""));
    add(replaced(text, "\"rssiDbm\" : -50", "\"rssiDbm\" : null"));
    add(replaced(text, "\"phase\" : \"completed\",", ""));
    EXPECT_EQ(validate(), 1);
}

} // namespace
} // namespace tolvo::testing

#include "platform/linux/terminal_keys.h"
#include "presentation/terminal/json_line_content.h"
#include "presentation/terminal/monitor_page.h"
#include "presentation/terminal/terminal_controller.h"
#include "presentation/terminal/terminal_text.h"
#include "tests/support/dashboard_values.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvo::testing {
namespace {

TEST(TerminalText, ForeignNamesCannotCommandTheTerminal) {
    struct Row {
        std::string_view text, safe;
    };
    for (const Row& row :
         {Row{"Café 😀", "Café 😀"}, Row{"\x1b[2Jx", "\\x1b[2Jx"}, Row{"a\xffz", "a\\xffz"},
          Row{"\u202Eevil", "\\u202eevil"}, Row{"\u009b31m", "\\x9b31m"}, Row{"\xE2\x82", "\\xe2\\x82"},
          Row{"\u061C1", "\\u061c1"}, Row{"\xED\xA0\x80", "\\xed\\xa0\\x80"}, Row{"\xC1\x81", "\\xc1\\x81"}})
        EXPECT_EQ(terminalSafe(row.text), row.safe);
    EXPECT_EQ(asciiOnly("Café — 日本…"), "Caf? - ????~");
}

TEST(TerminalText, ClipsByColumnsAndNotByBytes) {
    EXPECT_EQ(columnCount("日本e\u0301"), 5U);
    EXPECT_EQ(clippedToColumns("日本語", 5), "日本…");
    EXPECT_EQ(clippedToColumns("日本語", 4), "日…");
    EXPECT_EQ(clippedToColumns("abc", 3), "abc");
    EXPECT_EQ(clippedToColumns("abc", 0), "");
    EXPECT_EQ(paddedToColumns("—", 3), "—  ");
}

TEST(TerminalKeys, TellTheEscapeKeyFromASequence) {
    struct Row {
        std::string input;
        bool isComplete;
        std::vector<std::string> keys;
        std::string rest;
    };
    for (const Row& row :
         {Row{"mq", false, {"m", "q"}, ""}, Row{"\x1b[Ax", false, {"up", "x"}, ""}, Row{"\x1b", false, {}, "\x1b"},
          Row{"\x1b", true, {"escape"}, ""}, Row{"\x1b[1;5C", false, {"right"}, ""}, Row{"\x1b[", false, {}, "\x1b["},
          Row{"\x1b[3~", false, {""}, ""}, Row{"é\xC3", false, {"é"}, "\xC3"}, Row{"\r", false, {"enter"}, ""}}) {
        std::string input = row.input;
        std::vector<std::string> keys;
        while (auto key = takeTerminalKey(input, row.isComplete))
            keys.push_back(*key);
        EXPECT_EQ(keys, row.keys) << row.input;
        EXPECT_EQ(input, row.rest);
    }
}

std::string textOf(const TerminalLine& line) {
    std::string text;
    for (const TerminalSpan& span : line)
        text += span.text;
    return text;
}

TEST(MonitorScreen, FitsEverySizeDownToItsSmallest) {
    DashboardValues values;
    WiFiSnapshot snapshot = exampleWiFiSnapshot();
    snapshot.ssid = std::string(32, 'w') + "\x1b]0;x\a";
    values.latestSnapshot.set(snapshot);
    values.wifiHistory.set(std::vector<WiFiSnapshot>(60, snapshot));
    values.routerIPAddress.set("192.0.2.1");
    values.connectionResult.set(ConnectionPressureResult{{}, {1000000, 2000000, 3000000}, SignalQuality::Poor});
    CaptivePortalStatus portal;
    portal.isCaptivePortal = true;
    portal.portalURL = URL::parse("http://login.example/" + std::string(200, 'a'));
    values.captivePortalStatus.set(portal);
    for (const TerminalSize size : {TerminalSize{60, 20}, TerminalSize{80, 24}, TerminalSize{200, 60}}) {
        const auto lines = monitorScreen(values.sources(), {true, true}, size, TerminalGlyphs::Unicode, {});
        ASSERT_EQ(lines.size(), size.rows);
        for (const TerminalLine& line : lines)
            EXPECT_LE(columnCount(textOf(line)), size.columns) << textOf(line);
        EXPECT_NE(textOf(lines.back()).find("q quit"), std::string::npos);
        EXPECT_NE(textOf(lines.front()).find("Simulated air"), std::string::npos);
    }
    for (std::size_t columns = 0; columns < 5; ++columns)
        EXPECT_LE(monitorScreen(values.sources(), {}, {columns, 1}, TerminalGlyphs::ASCII, {}).size(), 1U);
}

TEST(JSONLine, HasAKeyForEachValueThereIs) {
    DashboardValues values;
    JSONLineContent content(values.sources(), false);
    const auto line = [&] { return content.line(WallTime()); };
    EXPECT_EQ(line(), R"({"healthState":"good","isRouterIgnored":false,)"
                      R"("statusMessage":"Monitoring active in background mode.","timestamp":"1970-01-01T00:00:00Z"})");
    values.internetResult.set(PingResult{PingTarget::Internet, {}, {}, {}, 100, false});
    EXPECT_NE(line().find(R"("internetPing":{"didSucceed":false,"packetLossPercent":100,"target":"internet",)"),
              std::string::npos);
    values.internetResult.set(PingResult{PingTarget::Internet, {}, 12.5, {}, 0, true});
    EXPECT_NE(line().find(R"("latencyMilliseconds":12.5,"packetLossPercent":0,)"), std::string::npos) << line();
    WiFiSnapshot snapshot = exampleWiFiSnapshot();
    snapshot.ssid = "a\xff\"";
    values.latestSnapshot.set(snapshot);
    EXPECT_NE(line().find(R"("ssid":"a\\xff\"")"), std::string::npos) << line();
}

/// Keeps what was written, and hands keys in.
class RecordingTerminal final : public TextTerminal {
public:
    bool isInteractive() const override { return true; }
    Size size() const override { return {80, 24}; }
    void enterScreen(std::function<void(std::string key)> handler) override { onKey = std::move(handler); }
    void leaveScreen() override { onKey = nullptr; }
    WriteOutcome write(std::string_view text) override {
        written += text;
        return outcome;
    }

    std::function<void(std::string key)> onKey;
    std::string written;
    WriteOutcome outcome = WriteOutcome::Written;
};

class Terminal : public ::testing::Test {
protected:
    std::string drawn() {
        terminal.written.clear();
        loop.advance(0.1);
        return terminal.written;
    }

    DashboardValues values;
    Published<bool> isBatteryFriendly{true};
    ManualLoop loop;
    RecordingTerminal terminal;
    std::vector<std::string> asked;
    int quits = 0;
    MonitorPage page{values.sources(),
                     isBatteryFriendly,
                     {[this](bool isOn) { asked.push_back(isOn ? "monitoring on" : "monitoring off"); },
                      [this](bool isOn) { asked.push_back(isOn ? "battery on" : "battery off"); }},
                     TerminalGlyphs::Unicode,
                     {},
                     false};
    TerminalController controller{loop, terminal, TerminalGlyphs::Unicode, page, {}, [this] { ++quits; }};
};

TEST_F(Terminal, DrawsOnlyWhatChangedAndOnlyWhenSomethingDid) {
    controller.enterScreen();
    EXPECT_NE(drawn().find("Internet Ping"), std::string::npos);
    EXPECT_EQ(drawn(), "");
    values.internetResult.set(PingResult{PingTarget::Internet, {}, 12.0, 1.0, 0, true});
    const std::string update = drawn();
    EXPECT_NE(update.find("12.0 ms"), std::string::npos);
    EXPECT_FALSE(update.ends_with("\x1b[K")) << "erasing behind a full line takes its last character";
    EXPECT_EQ(update.find("Router Ping"), std::string::npos);
}

TEST_F(Terminal, PaintsAllAnewAfterATerminalThatTookNothing) {
    controller.enterScreen();
    terminal.outcome = TextTerminal::WriteOutcome::Skipped;
    drawn();
    terminal.outcome = TextTerminal::WriteOutcome::Written;
    values.isRouterIgnored.set(true);
    EXPECT_NE(drawn().find("Packet Loss"), std::string::npos);
}

TEST_F(Terminal, KeysAskForTheOppositeAndAClosedOutputEnds) {
    controller.enterScreen();
    for (const char* key : {"m", "b", "x", "q"})
        terminal.onKey(key);
    EXPECT_EQ(asked, (std::vector<std::string>{"monitoring off", "battery off"}));
    EXPECT_EQ(quits, 1);
    terminal.outcome = TextTerminal::WriteOutcome::Closed;
    drawn();
    EXPECT_EQ(quits, 2);
}

} // namespace
} // namespace tolvo::testing

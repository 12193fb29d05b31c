#include "platform/linux/nl80211/nl80211_link.h"
#include "platform/linux/nl80211/nl80211_wifi_client.h"
#include "tests/support/nl80211_replies.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>

namespace tolvo::testing {
namespace {

using namespace std::string_literals;
using std::chrono::seconds;

constexpr std::uint32_t associated = 1U << NL80211_STA_FLAG_ASSOCIATED;

class ScriptedKernel final : public Nl80211Querying {
public:
    struct Answer {
        std::vector<NetlinkBuilder> replies;
        int error = 0;
    };
    using Question = std::pair<int, std::uint32_t>;

    std::expected<void, int> list(std::uint8_t command, std::optional<std::uint32_t> index,
                                  const OnReply& onReply) override {
        const Question question(command, index.value_or(0));
        if (const auto once = onceErrors.find(question); once != onceErrors.end())
            return std::unexpected(onceErrors.extract(once).mapped());
        const Answer& answer = answers[question];
        for (const NetlinkBuilder& reply : answer.replies)
            onReply(NetlinkAttributes(reply.bytes()));
        return answer.error == 0 ? std::expected<void, int>() : std::unexpected(answer.error);
    }
    std::expected<void, int> triggerScan(std::uint32_t) override {
        EXPECT_TRUE(onEvent) << "the events are heard from before the start";
        if (triggerError != 0)
            return std::unexpected(triggerError);
        send(NL80211_CMD_TRIGGER_SCAN);
        return {};
    }
    std::expected<LoopRegistration, int> watchScans(OnScanEvent handler) override {
        onEvent = std::move(handler);
        return LoopRegistration([this] { onEvent = nullptr; });
    }
    void send(std::uint8_t command, std::uint32_t wiphy = 7) {
        const NetlinkBuilder event = NetlinkBuilder().put(NL80211_ATTR_WIPHY, wiphy);
        onEvent(command, NetlinkAttributes(event.bytes()));
    }

    std::map<Question, Answer> answers;
    std::map<Question, int> onceErrors;
    int triggerError = 0;
    OnScanEvent onEvent;
};

class ScriptedRequester final : public WiFiScanRequesting {
public:
    Task<std::expected<void, std::string>> requestScan(std::string) override { co_return outcome; }
    std::expected<void, std::string> outcome;
};

class Nl80211WiFiClientTest : public ::testing::Test {
protected:
    Nl80211WiFiClientTest() {
        // What a machine has: a P2P device without a network device, then the station.
        interfaces().replies = {NetlinkBuilder().put(NL80211_ATTR_WIPHY, std::uint32_t{7}),
                                interfaceReply(3, "wlan0\0"s, 2437)};
        station(3).replies = {stationReply(stationFlags(associated).put(NL80211_STA_INFO_SIGNAL, std::int8_t{-48}))};
        kernel.answers[{NL80211_CMD_GET_SURVEY, 3}] = {{surveyReply(5180, -80), surveyReply(2437, -92)}, 0};
    }

    ScriptedKernel::Answer& interfaces() { return kernel.answers[{NL80211_CMD_GET_INTERFACE, 0}]; }
    ScriptedKernel::Answer& station(std::uint32_t index) { return kernel.answers[{NL80211_CMD_GET_STATION, index}]; }
    ScriptedKernel::Answer& heard() { return kernel.answers[{NL80211_CMD_GET_SCAN, 3}]; }

    /// Scans; after two seconds the kernel tells how the scan ended.
    std::optional<WiFiClient::ScanOutcome> scanEndingWith(std::optional<int> event) {
        auto timer = loop.after(Seconds(2), [this, event] {
            if (event && kernel.onEvent) {
                kernel.send(NL80211_CMD_NEW_SCAN_RESULTS, 8);
                kernel.send(static_cast<std::uint8_t>(*event));
            }
        });
        return runTask(loop, scanner.scan());
    }
    static std::string namesOf(const std::optional<WiFiClient::ScanOutcome>& outcome) {
        if (!outcome || !*outcome)
            return outcome ? outcome->error().description : "no end";
        std::string names;
        for (const WiFiNetwork& network : **outcome)
            names += network.ssid.value_or("-") + " ";
        return names;
    }

    static WiFiLink unattached(std::string name) {
        WiFiLink link;
        link.interfaceName = std::move(name);
        return link;
    }

    ManualLoop loop;
    ScriptedKernel kernel;
    ScriptedRequester requester;
    Nl80211WiFiClient client{loop, kernel, requester};
    Nl80211Scanner scanner{loop, kernel, requester, [] { return seconds(1000); }};
};

TEST_F(Nl80211WiFiClientTest, ReadsTheLinkOfTheAssociatedStation) {
    const WiFiLink link{
        "wlan0", "Caf\xC3\xA9", "02:00:00:00:01:00", -48, -92, 0, WiFiChannel{6, WiFiChannelBand::TwoGigahertz}};
    EXPECT_EQ(client.currentLink(), link);

    // The associated one goes before the first one.
    interfaces().replies.insert(interfaces().replies.begin(), interfaceReply(2, "wlan9", std::nullopt));
    station(2).replies = {stationReply(stationFlags(0))};
    EXPECT_EQ(client.currentLink(), link);
    station(3).replies.clear();
    EXPECT_EQ(client.currentLink(), unattached("wlan9"));

    interfaces().replies.clear();
    EXPECT_EQ(client.currentLink(), std::nullopt);
}

TEST_F(Nl80211WiFiClientTest, ReadsOnWhereADriverTellsLess) {
    auto& survey = kernel.answers[{NL80211_CMD_GET_SURVEY, 3}];
    survey = {{}, EOPNOTSUPP};
    EXPECT_EQ(client.currentLink()->noiseMeasurement, -95);
    survey = {{surveyReply(5180, -80), surveyReply(2437, 0)}, 0};
    EXPECT_EQ(client.currentLink()->noiseMeasurement, -95);

    // A link of several channels at once: the frequency comes from the associated access point.
    interfaces().replies = {interfaceReply(3, "wlan0", std::nullopt)};
    heard().replies = {bssReply("Other", 0),
                       bssReply("Home", 0, NetlinkBuilder().put(NL80211_BSS_STATUS, std::uint32_t{1}))};
    EXPECT_EQ(client.currentLink()->channel, (WiFiChannel{6, WiFiChannelBand::TwoGigahertz}));

    station(3) = {{}, ENETDOWN};
    EXPECT_EQ(client.currentLink(), unattached("wlan0"));
}

TEST_F(Nl80211WiFiClientTest, GivesTheNextTruthWhenTheInterfaceGoesInTheMiddle) {
    kernel.onceErrors[{NL80211_CMD_GET_STATION, 3}] = ENODEV;
    EXPECT_EQ(client.currentLink()->interfaceName, "wlan0");
    for (const int error : {ENODEV, ETIMEDOUT, EAGAIN, ENOENT}) {
        interfaces().error = error;
        EXPECT_EQ(client.currentLink(), std::nullopt);
    }
}

TEST(NoiseAtFrequency, PrefersTheEntryInUse) {
    EXPECT_EQ(noiseAtFrequency({{2437, false, -80}, {2437, true, -92}, {2437, false, -70}}, 2437), -92);
    EXPECT_EQ(noiseAtFrequency({{2437, true, std::nullopt}, {2437, false, -91}, {2412, true, -60}}, 2437), -91);
    EXPECT_EQ(noiseAtFrequency({{2412, true, -60}}, 2437), std::nullopt);
}

TEST_F(Nl80211WiFiClientTest, AScanListsWhatItHeard) {
    const auto seenAt = [](std::int64_t second) {
        return NetlinkBuilder().put(NL80211_BSS_LAST_SEEN_BOOTTIME, static_cast<std::uint64_t>(second) * 1'000'000'000);
    };
    heard().replies = {bssReply("new", 1900),
                       bssReply("gone", 2500),
                       bssReply("asleep", 10, seenAt(900)),
                       bssReply("awake", 9000, seenAt(999)),
                       bssReply("", 100),
                       bssReply("own", 9000, NetlinkBuilder().put(NL80211_BSS_STATUS, std::uint32_t{1}))};
    EXPECT_EQ(namesOf(scanEndingWith(NL80211_CMD_NEW_SCAN_RESULTS)), "new awake - own ");
    EXPECT_FALSE(kernel.onEvent);

    // A scan that runs already is joined; nobody knows when it began.
    kernel.triggerError = EBUSY;
    EXPECT_EQ(namesOf(scanEndingWith(NL80211_CMD_NEW_SCAN_RESULTS)), "new gone awake - own ");

    kernel.triggerError = 0;
    kernel.onceErrors[{NL80211_CMD_GET_SCAN, 3}] = EAGAIN;
    heard().replies.assign(2000, bssReply("crowd", 0));
    EXPECT_EQ(scanEndingWith(NL80211_CMD_NEW_SCAN_RESULTS)->value().size(), 2000u);
}

TEST_F(Nl80211WiFiClientTest, AScanThatFailsFallsBackOnWhatSomebodyElseHeard) {
    struct Case {
        const char* name;
        int triggerError;
        std::expected<void, std::string> requested;
        std::optional<int> event;
        const char* failure;
    };
    const char* const missing = "A scan takes NetworkManager or the capability CAP_NET_ADMIN. NetworkManager: gone";
    const Case cases[] = {
        {"no right, nobody to ask", EPERM, std::unexpected("gone"), {}, missing},
        {"asked, aborted", EPERM, {}, NL80211_CMD_SCAN_ABORTED, "The scan was ended before its time."},
        {"asked, never done", EPERM, {}, {}, "The scan did not end within 15 seconds."},
        {"switched off", ENETDOWN, {}, {}, "The Wi-Fi interface is switched off."},
        {"refused", EIO, {}, {}, "The Wi-Fi driver doesn't scan: Input/output error."}};
    const NetlinkBuilder own = bssReply("own", 0, NetlinkBuilder().put(NL80211_BSS_STATUS, std::uint32_t{1}));
    for (const auto& [name, triggerError, requested, event, failure] : cases) {
        kernel.triggerError = triggerError;
        requester.outcome = requested;
        heard().replies = {own, bssReply("old", 30'001)};
        EXPECT_EQ(namesOf(scanEndingWith(event)), failure) << name;
        heard().replies = {own, bssReply("recent", 30'000)};
        EXPECT_EQ(namesOf(scanEndingWith(event)), "own recent ") << name;
    }
    kernel.triggerError = EPERM;
    requester.outcome = {};
    EXPECT_EQ(namesOf(scanEndingWith(NL80211_CMD_NEW_SCAN_RESULTS)), "own recent ");
    interfaces().replies.clear();
    EXPECT_EQ(namesOf(scanEndingWith({})), "There is no Wi-Fi interface.");
}

TEST_F(Nl80211WiFiClientTest, AScanThatIsPutOffIsGivenTheOneBefore) {
    kernel.triggerError = EPERM;
    heard().replies = {bssReply("old", 4500), bssReply("heard", 1000)};
    auto start = loop.after(Seconds(1), [this] { kernel.send(NL80211_CMD_TRIGGER_SCAN); });
    EXPECT_EQ(namesOf(scanEndingWith(NL80211_CMD_NEW_SCAN_RESULTS)), "heard ");
    const auto secondsOfScan = [this] {
        const double before = loop.elapsed();
        EXPECT_TRUE(runTask(loop, scanner.scan())->has_value());
        return loop.elapsed() - before;
    };
    // Asked again at once, nobody begins a scan: two seconds later the first one's results serve.
    heard().replies.push_back(bssReply("heard then", 3900));
    EXPECT_EQ(namesOf(runTask(loop, scanner.scan())), "heard heard then ");
    EXPECT_NEAR(secondsOfScan(), 2, 0.1);
    // One that begins is waited for, and so is any when the last one was long ago.
    start = loop.after(Seconds(1.9), [this] { kernel.send(NL80211_CMD_TRIGGER_SCAN); });
    EXPECT_NEAR(secondsOfScan(), 15, 0.1);
    EXPECT_NEAR(secondsOfScan(), 15, 0.1);
}

TEST_F(Nl80211WiFiClientTest, ACancelledScanLetsGoOfTheEvents) {
    TaskScope tasks(loop);
    std::optional<WiFiClient::ScanOutcome> outcome;
    const TaskHandle handle = tasks.start(keepResult(scanner.scan(), outcome));
    loop.advance(1);
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_TRUE(handle.hasEnded());
    EXPECT_FALSE(outcome || kernel.onEvent || loop.timerCount() > 0);
}

} // namespace
} // namespace tolvo::testing

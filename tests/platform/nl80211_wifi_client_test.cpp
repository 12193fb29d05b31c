#include "platform/linux/nl80211/nl80211_wifi_client.h"
#include "tests/support/nl80211_replies.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

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
        int errorOnce = 0;
    };
    std::expected<void, int> list(std::uint8_t command, std::optional<std::uint32_t> index,
                                  const OnReply& onReply) override {
        Answer& answer = answers[{command, index.value_or(0)}];
        if (answer.errorOnce != 0)
            return std::unexpected(std::exchange(answer.errorOnce, 0));
        for (const NetlinkBuilder& reply : answer.replies)
            onReply(NetlinkAttributes(reply.bytes));
        return answer.error == 0 ? std::expected<void, int>() : std::unexpected(answer.error);
    }
    std::expected<void, int> triggerScan(std::uint32_t) override {
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
        const NetlinkBuilder event = NetlinkBuilder().number<std::uint32_t>(NL80211_ATTR_WIPHY, wiphy);
        onEvent(command, NetlinkAttributes(event.bytes));
    }

    std::map<std::pair<int, std::uint32_t>, Answer> answers;
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
        interfaces.replies = {NetlinkBuilder().number<std::uint32_t>(NL80211_ATTR_WIPHY, 7),
                              interfaceReply(3, "wlan0\0"s, 2437)};
        station.replies = {
            stationReply(associated, NetlinkBuilder().number<std::int8_t>(NL80211_STA_INFO_SIGNAL, -48))};
        survey.replies = {surveyReply(5180, -80), surveyReply(2437, -92)};
    }

    /// Scans; two seconds later the kernel tells how a scan of another radio ended, and how this one did.
    std::string namesOfScan(std::optional<int> event) {
        auto timer = loop.after(Seconds(2), [this, event] {
            if (event && kernel.onEvent) {
                kernel.send(NL80211_CMD_SCAN_ABORTED, 8);
                kernel.send(static_cast<std::uint8_t>(*event));
            }
        });
        const double before = loop.elapsed();
        const auto outcome = runTask(loop, scanner.scan());
        scanSeconds = loop.elapsed() - before;
        if (!outcome.value())
            return outcome->error().description;
        std::string names;
        for (const WiFiNetwork& network : **outcome)
            names += network.ssid.value_or("-") + " ";
        return names;
    }

    ManualLoop loop;
    ScriptedKernel kernel;
    ScriptedKernel::Answer& interfaces = kernel.answers[{NL80211_CMD_GET_INTERFACE, 0}];
    ScriptedKernel::Answer& station = kernel.answers[{NL80211_CMD_GET_STATION, 3}];
    ScriptedKernel::Answer& survey = kernel.answers[{NL80211_CMD_GET_SURVEY, 3}];
    ScriptedKernel::Answer& heard = kernel.answers[{NL80211_CMD_GET_SCAN, 3}];
    ScriptedRequester requester;
    Nl80211WiFiClient client{loop, kernel, requester};
    Nl80211Scanner scanner{loop, kernel, requester, [] { return seconds(1000); }};
    double scanSeconds = 0;
};

TEST_F(Nl80211WiFiClientTest, ReadsTheLinkOfTheAssociatedStation) {
    const WiFiChannel six{6, WiFiChannelBand::TwoGigahertz};
    const WiFiLink link{"wlan0", "Caf\xC3\xA9", "02:00:00:00:01:00", -48, -92, 0, six};
    EXPECT_EQ(client.currentLink(), link);
    // The associated one goes before the first one, which still tries.
    interfaces.replies.insert(interfaces.replies.begin(), interfaceReply(2, "wlan9", 2412));
    kernel.answers[{NL80211_CMD_GET_STATION, 2}].replies = {stationReply(0)};
    EXPECT_EQ(client.currentLink(), link);
    for (const int error : {0, ENETDOWN, EOPNOTSUPP}) {
        station = {{}, error, 0};
        EXPECT_EQ(client.currentLink()->interfaceName, "wlan9");
        EXPECT_EQ(client.currentLink()->ssid, std::nullopt);
    }
    interfaces.replies.clear();
    EXPECT_EQ(client.currentLink(), std::nullopt);
}

TEST_F(Nl80211WiFiClientTest, TakesTheNoiseOfItsOwnChannelOrTheThermalFloor) {
    const auto inUse = [](int noise) {
        return surveyReply(2437, noise, NetlinkBuilder().put(NL80211_SURVEY_INFO_IN_USE, ""));
    };
    const std::pair<ScriptedKernel::Answer, std::int64_t> cases[] = {
        {{{}, EOPNOTSUPP, 0}, -95},
        {{{surveyReply(5180, -80), surveyReply(2437, 0)}, 0, 0}, -95},
        {{{surveyReply(2437, -80), inUse(-90), surveyReply(2437, -70)}, 0, 0}, -90},
        {{{surveyReply(2437, -80), inUse(0)}, EIO, 0}, -80}};
    for (const auto& [answer, noise] : cases) {
        survey = answer;
        EXPECT_EQ(client.currentLink()->noiseMeasurement, noise);
    }
}

TEST_F(Nl80211WiFiClientTest, ReadsOnWhenTheInterfaceGoesOrHasNoFrequencyOfItsOwn) {
    station.errorOnce = ENODEV;
    EXPECT_EQ(client.currentLink()->interfaceName, "wlan0");
    interfaces.replies = {interfaceReply(3, "wlan0", 0)};
    heard.replies = {bssReply("Other", 0), associatedBSSReply("Home")};
    EXPECT_EQ(client.currentLink()->channel->channelNumber, 6);
    interfaces.error = ETIMEDOUT;
    EXPECT_EQ(client.currentLink(), std::nullopt);
}

TEST_F(Nl80211WiFiClientTest, AScanListsWhatItHeard) {
    const auto seenAt = [](long second) {
        return NetlinkBuilder().number<std::uint64_t>(NL80211_BSS_LAST_SEEN_BOOTTIME, second * 1'000'000'000);
    };
    heard.replies = {bssReply("new", 1900),
                     bssReply("gone", 2500),
                     bssReply("asleep", 10, seenAt(900)),
                     bssReply("awake", 9000, seenAt(999)),
                     bssReply("", 100),
                     associatedBSSReply("own")};
    EXPECT_EQ(namesOfScan(NL80211_CMD_NEW_SCAN_RESULTS), "new awake - own ");
    EXPECT_FALSE(kernel.onEvent);
    // A scan that runs already is joined; nobody knows when it began.
    kernel.triggerError = EBUSY;
    EXPECT_EQ(namesOfScan(NL80211_CMD_NEW_SCAN_RESULTS), "new gone awake - own ");
    heard = {std::vector(2000, bssReply("x", 0)), 0, EAGAIN};
    EXPECT_EQ(namesOfScan(NL80211_CMD_NEW_SCAN_RESULTS).size(), 4000u);
}

TEST_F(Nl80211WiFiClientTest, AScanThatFailsFallsBackOnWhatSomebodyElseHeard) {
    struct Case {
        int triggerError;
        std::expected<void, std::string> requested;
        std::optional<int> event;
        const char* failure;
    };
    const Case cases[] = {{EPERM,
                           std::unexpected("gone"),
                           {},
                           "A scan takes NetworkManager or the capability CAP_NET_ADMIN. NetworkManager: gone"},
                          {EPERM, {}, NL80211_CMD_SCAN_ABORTED, "The scan was ended before its time."},
                          {EPERM, {}, {}, "The scan did not end within 15 seconds."},
                          {ENETDOWN, {}, {}, "The Wi-Fi interface is switched off."},
                          {EIO, {}, {}, "The Wi-Fi driver doesn't scan: Input/output error."}};
    for (const auto& [triggerError, requested, event, failure] : cases) {
        kernel.triggerError = triggerError;
        requester.outcome = requested;
        heard.replies = {associatedBSSReply("own"), bssReply("old", 30'001)};
        EXPECT_EQ(namesOfScan(event), failure);
        heard.replies = {associatedBSSReply("own"), bssReply("recent", 30'000)};
        EXPECT_EQ(namesOfScan(event), "own recent ") << failure;
    }
    interfaces.replies.clear();
    EXPECT_EQ(namesOfScan({}), "There is no Wi-Fi interface.");
}

TEST_F(Nl80211WiFiClientTest, AScanThatIsPutOffIsGivenTheOneBefore) {
    kernel.triggerError = EPERM;
    heard.replies = {bssReply("old", 4500), bssReply("heard", 1000)};
    auto start = loop.after(Seconds(1), [this] { kernel.send(NL80211_CMD_TRIGGER_SCAN); });
    EXPECT_EQ(namesOfScan(NL80211_CMD_NEW_SCAN_RESULTS), "heard ");
    // Asked again at once, nobody begins a scan: two seconds later the first one's results serve.
    heard.replies.push_back(bssReply("then", 3900));
    EXPECT_EQ(namesOfScan({}), "heard then ");
    EXPECT_NEAR(scanSeconds, 2, 0.1);
    // One that begins is waited for, and so is any when the last one was long ago.
    start = loop.after(Seconds(1.9), [this] { kernel.send(NL80211_CMD_TRIGGER_SCAN); });
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(namesOfScan({}), "old heard then ");
        EXPECT_NEAR(scanSeconds, 15, 0.1);
    }
}

TEST_F(Nl80211WiFiClientTest, ACancelledScanLetsGoOfTheEvents) {
    TaskScope tasks(loop);
    std::optional<WiFiClient::ScanOutcome> outcome;
    const TaskHandle handle = tasks.start(keepResult(scanner.scan(), outcome));
    loop.advance(1);
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_FALSE(!handle.hasEnded() || outcome || kernel.onEvent || loop.timerCount() > 0);
}

} // namespace
} // namespace tolvo::testing

#include "probes/core_wlan_interface_provider.h"
#include "probes/core_wlan_network_scanner.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

#include <limits>

namespace tolvo::testing {
namespace {

class ScriptedWiFiClient final : public WiFiClient {
public:
    std::optional<WiFiLink> currentLink() override { return link; }
    Task<ScanOutcome> scan() override {
        ++scanCount;
        co_return outcome;
    }

    std::optional<WiFiLink> link = WiFiLink{};
    ScanOutcome outcome;
    int scanCount = 0;
};

TEST(CoreWLANInterfaceProvider, RoundsTheRateAndDropsWhatIsNone) {
    ScriptedWiFiClient client;
    CoreWLANInterfaceProvider provider(client);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, std::optional<std::int64_t>> cases[] = {
        {0.4, {}}, {0.5, 1},       {0.6, 1},    {866.7, 867},    {0, {}},
        {-5, {}},  {infinity, {}}, {1e300, {}}, {-infinity, {}}, {std::numeric_limits<double>::quiet_NaN(), {}},
    };
    for (const auto& [rate, expected] : cases) {
        client.link->transmitRate = rate;
        EXPECT_EQ(provider.currentSnapshot()->linkRateMbps, expected) << rate;
    }
}

TEST(CoreWLANInterfaceProvider, MapsChannelsAndKeepsTextsAsTheyCome) {
    ScriptedWiFiClient client;
    CoreWLANInterfaceProvider provider(client);
    EXPECT_EQ(provider.currentSnapshot(), (WiFiInterfaceSnapshot{"en0", {}, {}, 0, 0, {}, {}, {}}));

    const std::pair<int, WiFiBand> bands[] = {{0, WiFiBand::Unknown},
                                              {1, WiFiBand::TwoPointFourGigahertz},
                                              {2, WiFiBand::FiveGigahertz},
                                              {3, WiFiBand::SixGigahertz},
                                              {4, WiFiBand::Unknown}};
    for (const auto& [value, expected] : bands) {
        client.link = WiFiLink{
            "wlan0", " \t", "02:00:00:00:01:00", -48, -92, 6.5, WiFiChannel{6, static_cast<WiFiChannelBand>(value)}};
        EXPECT_EQ(provider.currentSnapshot(),
                  (WiFiInterfaceSnapshot{"wlan0", " \t", "02:00:00:00:01:00", -48, -92, 7, 6, expected}));
    }
    client.link.reset();
    EXPECT_EQ(provider.currentSnapshot(), std::nullopt);
}

TEST(CoreWLANNetworkScanner, KeepsEveryNetworkWithAChannel) {
    ManualLoop loop;
    ScriptedWiFiClient client;
    CoreWLANNetworkScanner scanner(client);
    EXPECT_EQ(runTask(loop, scanner.scanNetworks()), WiFiScanOutcome());

    const WiFiChannel six{6, WiFiChannelBand::TwoGigahertz};
    client.outcome = std::vector<WiFiNetwork>{{" Home\n", "a", -40, six},
                                              {"Home", "b", -41, six},
                                              {" \t ", "c", -42, WiFiChannel{1, WiFiChannelBand::SixGigahertz}},
                                              {std::nullopt, std::nullopt, -43, WiFiChannel{}},
                                              {"No channel", "d", -44, std::nullopt}};
    EXPECT_EQ(runTask(loop, scanner.scanNetworks()),
              WiFiScanOutcome({{"Home", "a", -40, 6, WiFiBand::TwoPointFourGigahertz},
                               {"Home", "b", -41, 6, WiFiBand::TwoPointFourGigahertz},
                               {std::nullopt, "c", -42, 1, WiFiBand::SixGigahertz},
                               {std::nullopt, std::nullopt, -43, 0, WiFiBand::Unknown}}));
}

TEST(CoreWLANNetworkScanner, FailsWithoutAnInterfaceAndWithThePlatformsWords) {
    using Kind = WiFiNetworkScannerError::Kind;
    ManualLoop loop;
    ScriptedWiFiClient client;
    CoreWLANNetworkScanner scanner(client);
    client.outcome = std::unexpected(WiFiScanError{"The radio is off."});
    EXPECT_EQ(runTask(loop, scanner.scanNetworks())->error(),
              (WiFiNetworkScannerError{Kind::PlatformFailure, "The radio is off."}));
    client.link.reset();
    EXPECT_EQ(runTask(loop, scanner.scanNetworks())->error(),
              (WiFiNetworkScannerError{Kind::InterfaceUnavailable, {}}));
    EXPECT_EQ(client.scanCount, 1) << "nothing is scanned without an interface";
}

} // namespace
} // namespace tolvo::testing

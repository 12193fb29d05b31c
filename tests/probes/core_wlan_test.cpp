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
    Task<ScanOutcome> scan() override { co_return outcome; }

    std::optional<WiFiLink> link = WiFiLink{};
    ScanOutcome outcome;
};

TEST(CoreWLANInterfaceProvider, RoundsTheRateAndDropsWhatIsNone) {
    ScriptedWiFiClient client;
    CoreWLANInterfaceProvider provider(client);
    const std::pair<double, std::optional<std::int64_t>> cases[] = {
        {0.4, {}}, {0.5, 1}, {866.7, 867}, {-5, {}}, {1e300, {}}, {std::numeric_limits<double>::quiet_NaN(), {}}};
    for (const auto& [rate, expected] : cases) {
        client.link->transmitRate = rate;
        EXPECT_EQ(provider.currentSnapshot()->linkRateMbps, expected) << rate;
    }
}

TEST(CoreWLANInterfaceProvider, MapsChannelsAndKeepsTextsAsTheyCome) {
    ScriptedWiFiClient client;
    CoreWLANInterfaceProvider provider(client);
    EXPECT_EQ(provider.currentSnapshot(), (WiFiInterfaceSnapshot{"en0", {}, {}, 0, 0, {}, {}, {}}));
    using enum WiFiBand;
    const WiFiBand bands[] = {Unknown, TwoPointFourGigahertz, FiveGigahertz, SixGigahertz, Unknown};
    for (int value = 0; value < 5; ++value) {
        client.link = WiFiLink{"wlan0", " \t", "a", -48, -92, 6.5, WiFiChannel{6, static_cast<WiFiChannelBand>(value)}};
        EXPECT_EQ(provider.currentSnapshot(),
                  (WiFiInterfaceSnapshot{"wlan0", " \t", "a", -48, -92, 7, 6, bands[value]}));
    }
    client.link.reset();
    EXPECT_EQ(provider.currentSnapshot(), std::nullopt);
}

TEST(CoreWLANNetworkScanner, KeepsEveryNetworkWithAChannelOrSaysWhyNot) {
    ManualLoop loop;
    ScriptedWiFiClient client;
    CoreWLANNetworkScanner scanner(client);
    EXPECT_EQ(runTask(loop, scanner.scanNetworks()), WiFiScanOutcome());
    const WiFiChannel six{6, WiFiChannelBand::TwoGigahertz};
    client.outcome = {
        {" Home\n", "a", -40, six}, {"Home", "b", -41, six}, {" \t ", "c", -42, WiFiChannel{}}, {"d", "d", -44, {}}};
    EXPECT_EQ(runTask(loop, scanner.scanNetworks()),
              WiFiScanOutcome({{"Home", "a", -40, 6, WiFiBand::TwoPointFourGigahertz},
                               {"Home", "b", -41, 6, WiFiBand::TwoPointFourGigahertz},
                               {std::nullopt, "c", -42, 0, WiFiBand::Unknown}}));
    using Kind = WiFiNetworkScannerError::Kind;
    client.outcome = std::unexpected(WiFiScanError{"Off."});
    EXPECT_EQ(runTask(loop, scanner.scanNetworks())->error(), (WiFiNetworkScannerError{Kind::PlatformFailure, "Off."}));
    client.link.reset();
    EXPECT_EQ(runTask(loop, scanner.scanNetworks())->error(),
              (WiFiNetworkScannerError{Kind::InterfaceUnavailable, {}}));
}

} // namespace
} // namespace tolvo::testing

#include "app/wifi_hardware.h"

#include "app/process_environment.h"
#include "platform/demo/simulated_air.h"
#include "platform/linux/network_manager_scan_requester.h"
#include "platform/linux/nl80211/nl80211_connection.h"
#include "platform/linux/nl80211/nl80211_wifi_client.h"

namespace tolvo {

namespace {

/// Any will do; the same gives the same walk each time.
constexpr std::uint64_t simulatedAirSeed = 1;

/// The client with what it stands on.
class WiFiHardware final : public WiFiClient {
public:
    explicit WiFiHardware(MainLoop& loop)
        : kernel_(loop), scanRequester_(loop), client_(loop, kernel_, scanRequester_) {}

    std::optional<WiFiLink> currentLink() override { return client_.currentLink(); }
    Task<ScanOutcome> scan() override { return client_.scan(); }

private:
    Nl80211Connection kernel_;
    NetworkManagerScanRequester scanRequester_;
    Nl80211WiFiClient client_;
};

} // namespace

bool isSimulatedAirAskedFor() {
    return environmentVariable("TOLVO_AIR") == "demo";
}

std::unique_ptr<WiFiClient> makeWiFiClient(MainLoop& loop) {
    if (isSimulatedAirAskedFor())
        return std::make_unique<SimulatedAir>(loop, simulatedAirSeed);
    return std::make_unique<WiFiHardware>(loop);
}

} // namespace tolvo

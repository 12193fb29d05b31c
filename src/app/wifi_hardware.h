#pragma once

#include "core/async/main_loop.h"
#include "platform/services/wifi_client.h"

#include <memory>

namespace tolvo {

/// Whether the user asked for the simulated air (TOLVO_AIR=demo).
bool isSimulatedAirAskedFor();

/// The machine's Wi-Fi over nl80211, or the simulated air if the user asked for it.
std::unique_ptr<WiFiClient> makeWiFiClient(MainLoop& loop);

} // namespace tolvo

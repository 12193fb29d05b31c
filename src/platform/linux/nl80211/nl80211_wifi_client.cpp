#include "platform/linux/nl80211/nl80211_wifi_client.h"

#include "platform/linux/nl80211/nl80211_link.h"

#include <cerrno>
#include <ctime>

namespace tolvo {

namespace {

std::chrono::nanoseconds timeSinceBoot() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

} // namespace

Nl80211WiFiClient::Nl80211WiFiClient(MainLoop& loop, Nl80211Querying& kernel, WiFiScanRequesting& requester)
    : kernel_(kernel), scanner_(loop, kernel, requester, timeSinceBoot) {}

std::optional<WiFiLink> Nl80211WiFiClient::currentLink() {
    auto link = readLink(kernel_);
    // The interface, or the module with its socket, went away in the middle: what is there now is the truth.
    if (!link && link.error() != EPROTONOSUPPORT)
        link = readLink(kernel_);
    return link.value_or(std::nullopt);
}

} // namespace tolvo

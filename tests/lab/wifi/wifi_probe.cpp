// Prints what the Wi-Fi client reads, for the test bed to compare: wifi_probe link | scan | speed | watch SECONDS
#include "core/async/task_scope.h"
#include "platform/linux/network_manager_scan_requester.h"
#include "platform/linux/nl80211/nl80211_connection.h"
#include "platform/linux/nl80211/nl80211_wifi_client.h"
#include "platform/linux/poll_loop.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace {

using namespace tolvo;

std::string text(const std::optional<WiFiLink>& link) {
    if (!link || !link->channel)
        return link ? "unattached" : "none";
    char line[200];
    std::snprintf(line, sizeof line, "%s %s %s rssi %lld noise %lld rate %.1f channel %lld band %d",
                  link->interfaceName->c_str(), link->bssid->c_str(), link->ssid.value_or("-").c_str(),
                  static_cast<long long>(link->rssiValue), static_cast<long long>(link->noiseMeasurement),
                  link->transmitRate, static_cast<long long>(link->channel->channelNumber),
                  static_cast<int>(link->channel->channelBand));
    return line;
}

Task<void> printScan(WiFiClient& client, PollLoop& loop, int& status) {
    const auto found = co_await client.scan();
    for (const WiFiNetwork& network : found.value_or(std::vector<WiFiNetwork>())) {
        std::printf("%s %s rssi %lld channel %lld\n", network.bssid->c_str(), network.ssid.value_or("-").c_str(),
                    static_cast<long long>(network.rssiValue), static_cast<long long>(network.channel->channelNumber));
    }
    if (!found)
        std::printf("failed: %s\n", found.error().description.c_str());
    status = found ? 0 : 1;
    loop.quit();
}

void printSpeed(WiFiClient& client) {
    std::vector<double> microseconds;
    for (int i = 0; i < 1000; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        std::ignore = client.currentLink();
        microseconds.push_back(
            std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count());
    }
    std::ranges::sort(microseconds);
    std::printf("median %.0f us, 99th percentile %.0f us\n", microseconds[500], microseconds[990]);
}

/// Each change of access point and channel, read as fast as it goes.
void watch(WiFiClient& client, double seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    std::string last;
    while (std::chrono::steady_clock::now() < end) {
        const auto link = client.currentLink();
        const std::string now =
            link && link->channel ? *link->bssid + " " + std::to_string(link->channel->channelNumber) : text(link);
        if (std::exchange(last, now) != now) {
            std::printf("%s\n", now.c_str());
            std::fflush(stdout);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view command = argumentCount > 1 ? arguments[1] : "link";
    PollLoop loop;
    Nl80211Connection kernel(loop);
    NetworkManagerScanRequester requester;
    Nl80211WiFiClient client(loop, kernel, requester);
    int status = 0;
    if (command == "link")
        std::printf("%s\n", text(client.currentLink()).c_str());
    if (command == "speed")
        printSpeed(client);
    if (command == "watch")
        watch(client, argumentCount > 2 ? std::atof(arguments[2]) : 1);
    if (command == "scan") {
        TaskScope tasks(loop);
        tasks.start(printScan(client, loop, status));
        loop.run();
    }
    return status;
}

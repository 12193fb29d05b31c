// Prints what the Wi-Fi client reads, for the bed to compare: wifi_probe link | scan | speed | watch SECONDS
#include "core/async/task_scope.h"
#include "platform/linux/network_manager_scan_requester.h"
#include "platform/linux/nl80211/nl80211_connection.h"
#include "platform/linux/nl80211/nl80211_wifi_client.h"
#include "platform/linux/poll_loop.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace tolvo;
using Clock = std::chrono::steady_clock;

std::string text(const std::optional<WiFiLink>& link) {
    if (!link || !link->channel)
        return link ? "unattached" : "none";
    return *link->bssid + " " + link->ssid.value_or("-") + " " + std::to_string(link->channel->channelNumber);
}

void printLink(const std::optional<WiFiLink>& link) {
    std::cout << text(link);
    if (link && link->channel) {
        std::cout << " " << *link->interfaceName << " band " << static_cast<int>(link->channel->channelBand) << " rssi "
                  << link->rssiValue << " noise " << link->noiseMeasurement << " rate " << link->transmitRate;
    }
    std::cout << "\n";
}

Task<void> printScan(WiFiClient& client, PollLoop& loop) {
    const auto found = co_await client.scan();
    for (const WiFiNetwork& network : found ? *found : std::vector<WiFiNetwork>())
        std::cout << *network.bssid << " " << network.ssid.value_or("-") << " " << network.channel->channelNumber
                  << "\n";
    if (!found)
        std::cout << found.error().description << "\n";
    loop.quit();
}

void printMedianMicroseconds(WiFiClient& client) {
    std::vector<Clock::duration> durations(1001);
    for (auto& duration : durations) {
        const auto begin = Clock::now();
        printLink(client.currentLink());
        duration = Clock::now() - begin;
    }
    std::ranges::sort(durations);
    std::cerr << std::chrono::duration_cast<std::chrono::microseconds>(durations[500]).count() << "\n";
}

/// Each change of access point and channel, read as fast as it goes.
void watch(WiFiClient& client, std::chrono::seconds duration) {
    std::string last;
    for (const auto end = Clock::now() + duration; Clock::now() < end;) {
        if (const std::string now = text(client.currentLink()); std::exchange(last, now) != now)
            std::cout << now << std::endl;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

} // namespace

int main(int count, char** arguments) {
    const std::string command = count > 1 ? arguments[1] : "link";
    PollLoop loop;
    Nl80211Connection kernel(loop);
    NetworkManagerScanRequester requester(loop);
    Nl80211WiFiClient client(loop, kernel, requester);
    TaskScope tasks(loop);
    if (command == "link")
        printLink(client.currentLink());
    else if (command == "speed")
        printMedianMicroseconds(client);
    else if (command == "watch" && count > 2)
        watch(client, std::chrono::seconds(std::stoi(arguments[2])));
    else if (tasks.start(printScan(client, loop)); command == "scan")
        loop.run();
}

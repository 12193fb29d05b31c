#include "platform/linux/network_manager_scan_requester.h"

#include "core/async/off_main.h"

#include <sdbus-c++/sdbus-c++.h>

#include <map>

namespace tolvo {

namespace {

constexpr const char* service = "org.freedesktop.NetworkManager";

/// NetworkManager answers in milliseconds, and may be starting anew.
constexpr std::chrono::seconds callTimeout{3};

std::expected<void, std::string> requestScanBlocking(const std::string& interfaceName) {
    try {
        const auto connection = sdbus::createSystemBusConnection();
        const auto manager = sdbus::createProxy(*connection, service, "/org/freedesktop/NetworkManager");
        sdbus::ObjectPath device;
        manager->callMethod("GetDeviceByIpIface")
            .onInterface(service)
            .withTimeout(callTimeout)
            .withArguments(interfaceName)
            .storeResultsTo(device);
        const auto wireless = sdbus::createProxy(*connection, service, device);
        wireless->callMethod("RequestScan")
            .onInterface("org.freedesktop.NetworkManager.Device.Wireless")
            .withTimeout(callTimeout)
            .withArguments(std::map<std::string, sdbus::Variant>());
        return {};
    } catch (const sdbus::Error& error) {
        return std::unexpected(error.getMessage());
    }
}

} // namespace

Task<std::expected<void, std::string>> NetworkManagerScanRequester::requestScan(std::string interfaceName) {
    co_return co_await offMain(
        [name = std::move(interfaceName)](std::stop_token) { return requestScanBlocking(name); });
}

} // namespace tolvo

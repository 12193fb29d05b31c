#include "platform/linux/network_manager_scan_requester.h"

#include "core/async/one_shot.h"

#include <systemd/sd-bus.h>

#include <utility>

namespace tolvo {

namespace {

using Outcome = std::expected<void, std::string>;

constexpr const char* service = "org.freedesktop.NetworkManager";
constexpr BusConnection::Method getDevice{service, "/org/freedesktop/NetworkManager", service, "GetDeviceByIpIface"};

std::string errorText(sd_bus_message& reply) {
    const sd_bus_error* error = sd_bus_message_get_error(&reply);
    if (!error)
        return "It sent an answer that makes no sense.";
    return error->message ? error->message : error->name;
}

/// One request on a connection of its own, since they are minutes apart: the device by its name, then its scan.
class ScanRequest {
public:
    ScanRequest(MainLoop& loop, const std::string& busAddress, std::string interfaceName, Seconds longestWait)
        : interfaceName_(std::move(interfaceName)), bus_(loop, busAddress, {}) {
        bus_.onConnecting = [this] { askForDevice(); };
        bus_.onDisconnected = [this] {
            deviceCall_.reset();
            scanCall_.reset();
            fail("The system bus is not there.");
        };
        bus_.start();
        limit_ = loop.after(longestWait, [this] { fail("There was no answer in time."); });
    }

    Task<Outcome> outcome() const { return outcome_.take(); }

private:
    void askForDevice() {
        const auto writeName = [this](sd_bus_message& call) {
            return sd_bus_message_append_basic(&call, 's', interfaceName_.c_str());
        };
        deviceCall_ = bus_.call(getDevice, writeName, [this](sd_bus_message& reply) { receiveDevice(reply); });
        if (!deviceCall_)
            fail("The interface has no proper name.");
    }

    void receiveDevice(sd_bus_message& reply) {
        const char* path = nullptr;
        if (sd_bus_message_is_method_error(&reply, nullptr) || sd_bus_message_read(&reply, "o", &path) <= 0) {
            fail(errorText(reply));
            return;
        }
        const BusConnection::Method requestScan{service, path, "org.freedesktop.NetworkManager.Device.Wireless",
                                                "RequestScan"};
        const auto writeNoOptions = [](sd_bus_message& call) { return sd_bus_message_append(&call, "a{sv}", 0); };
        scanCall_ = bus_.call(requestScan, writeNoOptions, [this](sd_bus_message& scanReply) {
            if (sd_bus_message_is_method_error(&scanReply, nullptr))
                fail(errorText(scanReply));
            else
                outcome_.set({});
        });
    }

    void fail(std::string description) { outcome_.set(std::unexpected(std::move(description))); }

    const std::string interfaceName_;
    OneShot<Outcome> outcome_;
    BusConnection bus_;
    // After the bus, so that they go before it.
    BusConnection::OwnedSlot deviceCall_;
    BusConnection::OwnedSlot scanCall_;
    LoopRegistration limit_;
};

} // namespace

NetworkManagerScanRequester::NetworkManagerScanRequester(MainLoop& loop, std::string busAddress, Seconds longestWait)
    : loop_(loop), busAddress_(std::move(busAddress)), longestWait_(longestWait) {}

Task<Outcome> NetworkManagerScanRequester::requestScan(std::string interfaceName) {
    const ScanRequest request(loop_, busAddress_, std::move(interfaceName), longestWait_);
    co_return co_await request.outcome();
}

} // namespace tolvo

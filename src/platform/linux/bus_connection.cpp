#include "platform/linux/bus_connection.h"

#include <poll.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace tolvo {

namespace {

/// Per turn of the loop, so that a flood of messages leaves it to the others as well.
constexpr int mostMessagesAtOnce = 64;

struct MessageDeleter {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

} // namespace

class BusConnection::Slot {
public:
    explicit Slot(MessageHandler handler) : handler_(std::move(handler)) {}
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;
    ~Slot() { sd_bus_slot_unref(slot_); }

    sd_bus_slot** place() { return &slot_; }
    static int receive(sd_bus_message* message, void* self, sd_bus_error*) {
        static_cast<Slot*>(self)->handler_(*message);
        return 0;
    }

private:
    MessageHandler handler_;
    sd_bus_slot* slot_ = nullptr;
};

void BusConnection::SlotDeleter::operator()(Slot* slot) const {
    delete slot;
}

void BusConnection::BusDeleter::operator()(sd_bus* bus) const {
    sd_bus_close_unref(bus);
}

std::string BusConnection::systemBusAddress() {
    const char* address = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address && *address ? address : "unix:path=/run/dbus/system_bus_socket";
}

std::string BusConnection::sessionBusAddress() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address && *address)
        return address;
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    return "unix:path=" + (folder && *folder ? folder : "/run/user/" + std::to_string(::getuid())) + "/bus";
}

BusConnection::BusConnection(MainLoop& loop, std::string address, RetryDelays retryDelays)
    : loop_(loop), address_(std::move(address)), retryDelays_(retryDelays), retryDelay_(retryDelays.first) {}

BusConnection::~BusConnection() = default;

void BusConnection::start() {
    timer_ = loop_.after(Seconds(0), [this] { connect(); });
}

void BusConnection::connect() {
    if (!open()) {
        disconnect();
        return;
    }
    if (onConnecting)
        onConnecting();
    waitForBus();
}

bool BusConnection::open() {
    sd_bus* bus = nullptr;
    if (sd_bus_new(&bus) < 0)
        return false;
    bus_.reset(bus);
    return sd_bus_set_address(bus, address_.c_str()) >= 0 && sd_bus_set_bus_client(bus, 1) >= 0 &&
           sd_bus_start(bus) >= 0;
}

void BusConnection::process() {
    int result = 1;
    for (int i = 0; i < mostMessagesAtOnce && result > 0; ++i)
        result = sd_bus_process(bus_.get(), nullptr);
    if (result < 0) {
        disconnect();
        return;
    }
    if (sd_bus_is_ready(bus_.get()) > 0)
        retryDelay_ = retryDelays_.first;
    waitForBus();
}

void BusConnection::disconnect() {
    readable_.reset();
    writable_.reset();
    watchedDescriptor_ = -1;
    if (onDisconnected)
        onDisconnected();
    bus_.reset();
    retryLater();
}

void BusConnection::retryLater() {
    timer_ = loop_.after(Seconds(retryDelay_), [this] { connect(); });
    retryDelay_ = std::min(retryDelay_ * 2, retryDelays_.longest);
}

/// What is waited for changes with each step of the connection, and with an address of several places the descriptor
/// too.
void BusConnection::waitForBus() {
    const int descriptor = sd_bus_get_fd(bus_.get());
    const int events = sd_bus_get_events(bus_.get());
    std::uint64_t timeout = UINT64_MAX;
    if (descriptor < 0 || events < 0 || sd_bus_get_timeout(bus_.get(), &timeout) < 0) {
        disconnect();
        return;
    }
    const bool isOtherDescriptor = std::exchange(watchedDescriptor_, descriptor) != descriptor;
    if (isOtherDescriptor)
        readable_ = loop_.watch(descriptor, DescriptorEvent::Readable, [this] { process(); });
    if ((events & POLLOUT) == 0)
        writable_.reset();
    else
        writable_ = loop_.watch(descriptor, DescriptorEvent::Writable, [this] { process(); });
    timer_.reset();
    if (timeout == UINT64_MAX)
        return;
    const auto deadline = MonotonicTime(std::chrono::microseconds(timeout));
    timer_ = loop_.after(deadline - std::chrono::steady_clock::now(), [this] { process(); });
}

BusConnection::OwnedSlot BusConnection::match(const std::string& rule, MessageHandler handler) {
    OwnedSlot slot(new Slot(std::move(handler)));
    if (!bus_ ||
        sd_bus_add_match_async(bus_.get(), slot->place(), rule.c_str(), Slot::receive, nullptr, slot.get()) < 0)
        return nullptr;
    return slot;
}

BusConnection::OwnedSlot BusConnection::call(const Method& method, const ArgumentWriter& writeArguments,
                                             MessageHandler handler, ServiceStart serviceStart) {
    sd_bus_message* created = nullptr;
    if (!bus_ || sd_bus_message_new_method_call(bus_.get(), &created, method.destination, method.path, method.interface,
                                                method.name) < 0)
        return nullptr;
    const std::unique_ptr<sd_bus_message, MessageDeleter> message(created);
    sd_bus_message_set_auto_start(created, serviceStart == ServiceStart::IfNeeded ? 1 : 0);
    if (writeArguments(*created) < 0)
        return nullptr;
    OwnedSlot slot(new Slot(std::move(handler)));
    if (sd_bus_call_async(bus_.get(), slot->place(), created, Slot::receive, slot.get(), 0) < 0)
        return nullptr;
    return slot;
}

} // namespace tolvo

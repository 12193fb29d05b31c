#pragma once

#include "core/async/main_loop.h"

#include <functional>
#include <memory>
#include <string>

struct sd_bus;
struct sd_bus_message;

namespace tolvo {

/// Stays connected to a message bus, driven by the main loop without a thread: connecting, signing in and calling never
/// block, not even on a bus that has stopped answering. A bus that is not there, or goes away, is tried again after a
/// delay that doubles; until then nothing happens. The loop outlives it. Main thread only.
class BusConnection {
public:
    /// Seconds.
    struct RetryDelays {
        double first = 1;
        double longest = 60;
    };
    using MessageHandler = std::function<void(sd_bus_message& message)>;
    /// Appends a call's arguments; gives what the last append gave.
    using ArgumentWriter = std::function<int(sd_bus_message& call)>;

    /// A match or a call under way; when it goes, its handler isn't called any more. It goes in onDisconnected at the
    /// latest, and never from inside its own handler.
    class Slot;
    struct SlotDeleter {
        void operator()(Slot* slot) const;
    };
    using OwnedSlot = std::unique_ptr<Slot, SlotDeleter>;

    struct Method {
        const char* destination;
        const char* path;
        const char* interface;
        const char* name;
    };

    /// Whether a call starts a service that doesn't run.
    enum class ServiceStart { Never, IfNeeded };

    /// What DBUS_SYSTEM_BUS_ADDRESS says, else the usual place.
    static std::string systemBusAddress();
    /// What DBUS_SESSION_BUS_ADDRESS says, else the usual place.
    static std::string sessionBusAddress();

    BusConnection(MainLoop& loop, std::string address, RetryDelays retryDelays);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection();

    /// Called with each new connection, before it is signed in: what is asked for here goes out once it is.
    std::function<void()> onConnecting;
    /// Called after each loss of a connection, and each time none could be made; not by the destructor.
    std::function<void()> onDisconnected;

    /// Connects from the next turn of the loop on.
    void start();

    // To be called from onConnecting or from handlers; nothing is sent, and nothing given, without a connection.

    OwnedSlot match(const std::string& rule, MessageHandler handler);
    /// The reply may be an error message, the bus's own "no reply" after 25 seconds too.
    OwnedSlot call(const Method& method, const ArgumentWriter& writeArguments, MessageHandler handler,
                   ServiceStart serviceStart = ServiceStart::Never);

private:
    struct BusDeleter {
        void operator()(sd_bus* bus) const;
    };

    void connect();
    bool open();
    void process();
    void disconnect();
    void retryLater();
    void waitForBus();

    MainLoop& loop_;
    const std::string address_;
    const RetryDelays retryDelays_;
    double retryDelay_;
    std::unique_ptr<sd_bus, BusDeleter> bus_;
    int watchedDescriptor_ = -1;
    LoopRegistration readable_;
    LoopRegistration writable_;
    LoopRegistration timer_;
};

} // namespace tolvo

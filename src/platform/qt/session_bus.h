#pragma once

#include "core/async/main_loop.h"
#include "platform/qt/dbus_signal_listener.h"

#include <QDBusConnection>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace tolvo {

/// A connection of our own to the session's bus, made anew when the bus went away and came back. Main thread only.
class SessionBus final {
public:
    struct Follower {
        /// With a new connection each time.
        std::function<void(const QDBusConnection&)> onConnect;
        std::function<void()> onDisconnect;
    };

    explicit SessionBus(MainLoop& loop) : loop_(loop) {}
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus() { disconnect(); }

    /// Before connect(). Followers are told in this order, and outlive the connection.
    void addFollower(Follower follower) { followers_.push_back(std::move(follower)); }
    /// If it fails, everybody is told of a disconnection, and it goes on trying, ever more slowly.
    void connect();
    void disconnect();

private:
    bool tryToConnect();
    void retryLater();
    void drop();

    MainLoop& loop_;
    std::vector<Follower> followers_;
    QString connectionName_;
    std::unique_ptr<DBusSignalListener> disconnected_;
    Seconds retryDelay_{0};
    LoopRegistration retry_;
};

} // namespace tolvo

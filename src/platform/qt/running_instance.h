#pragma once

#include "platform/qt/session_bus.h"

#include <QDBusVirtualObject>

#include <functional>

namespace tolvo {

/// Sees to it that a user has one instance of the program at a time: a name on the session's bus, by which a second
/// start finds the first and asks it to show itself. Without a bus every instance is the first. Main thread only.
class RunningInstance final : public QDBusVirtualObject {
public:
    /// Before the bus is connected.
    explicit RunningInstance(SessionBus& bus);

    /// A second start asks the first to show itself.
    std::function<void()> onPresent;

    /// Once the bus is connected. It stays the first when the bus comes back and another has its name.
    bool isFirst() const { return isFirst_; }
    /// What the second one does before it ends; waits for the answer for a moment.
    void presentFirst();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void claim(const QDBusConnection& connection);

    bool isFirst_ = true;
    bool hasClaimed_ = false;
    QDBusConnection connection_;
};

} // namespace tolvo

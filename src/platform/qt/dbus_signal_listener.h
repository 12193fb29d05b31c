#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <functional>

namespace tolvo {

/// One D-Bus signal as a callback, for as long as this object lives.
class DBusSignalListener final : public QObject {
    Q_OBJECT

public:
    DBusSignalListener(const QDBusConnection& connection, const QString& service, const QString& path,
                       const QString& interface, const QString& name,
                       std::function<void(const QDBusMessage&)> onSignal);
    ~DBusSignalListener() override;

private Q_SLOTS:
    void receive(const QDBusMessage& message) { onSignal_(message); }

private:
    QDBusConnection connection_;
    QString service_;
    QString path_;
    QString interface_;
    QString name_;
    std::function<void(const QDBusMessage&)> onSignal_;
};

} // namespace tolvo

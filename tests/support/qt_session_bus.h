#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace tolvo::testing {

/// A bus of the test's own, which can go away and come back at the same address.
class QtSessionBus {
public:
    QtSessionBus() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8());
        start();
    }
    ~QtSessionBus() { stop(); }

    QString address() const { return QStringLiteral("unix:path=") + folder_.filePath(QStringLiteral("bus")); }
    void start() {
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                       QStringLiteral("--address=") + address(), QStringLiteral("--print-address=1")});
        daemon_.waitForReadyRead();
    }
    void stop() {
        daemon_.kill();
        daemon_.waitForFinished();
        QFile::remove(folder_.filePath(QStringLiteral("bus")));
    }

private:
    QTemporaryDir folder_;
    QProcess daemon_;
};

} // namespace tolvo::testing

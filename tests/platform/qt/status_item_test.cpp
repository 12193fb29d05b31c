#include "platform/qt/qt_main_loop.h"
#include "platform/qt/qt_status_item.h"
#include "platform/qt/status_notifier_pixmap.h"
#include "tests/support/eventually.h"
#include "tests/support/qt_session_bus.h"

#include <QDBusArgument>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDBusVariant>
#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

/// A status area: keeps who registered, and calls them.
class StatusArea final : public QDBusVirtualObject {
public:
    explicit StatusArea(const QtSessionBus& bus, bool hasHost = true)
        : hasHost_(hasHost), connection_(QDBusConnection::connectToBus(bus.address(), nextName())) {
        connection_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this);
        connection_.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    }
    ~StatusArea() override { QDBusConnection::disconnectFromBus(connection_.name()); }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == QStringLiteral("RegisterStatusNotifierItem"))
            items.append(message.arguments().value(0).toString());
        connection.send(message.member() == QStringLiteral("Get")
                            ? message.createReply(QVariant::fromValue(QDBusVariant(hasHost_)))
                            : message.createReply());
        return true;
    }

    void setHost(bool hasHost) {
        hasHost_ = hasHost;
        connection_.send(QDBusMessage::createSignal(QStringLiteral("/StatusNotifierWatcher"),
                                                    QStringLiteral("org.kde.StatusNotifierWatcher"),
                                                    QStringLiteral("StatusNotifierHostRegistered")));
    }

    /// The reply, once it is there; the item answers in the same thread.
    QDBusMessage call(const QString& interface, const QString& method, const QVariantList& arguments) {
        auto message =
            QDBusMessage::createMethodCall(items.value(0), QStringLiteral("/StatusNotifierItem"), interface, method);
        message.setArguments(arguments);
        QDBusPendingCall pending = connection_.asyncCall(message);
        eventually([&] { return pending.isFinished(); });
        return pending.reply();
    }
    QDBusMessage click(const QVariantList& arguments) {
        return call(QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Activate"), arguments);
    }
    QVariant property(const QString& name) {
        const QDBusMessage reply = call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                                        {QStringLiteral("org.kde.StatusNotifierItem"), name});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    QStringList items;

private:
    static QString nextName() {
        static int count = 0;
        return QStringLiteral("area-%1").arg(++count);
    }

    bool hasHost_;
    QDBusConnection connection_;
};

class StatusItemOnABus : public ::testing::Test {
protected:
    StatusItemOnABus() {
        item.onHostChange = [this](bool isHosted) { hosted.push_back(isHosted); };
        item.onActivate = [this](ScreenRect place) { clicks.push_back(place); };
        item.setToolTip("Tolvo");
        item.setImage({RasterImage{1, 1, {0x80112233}}});
    }
    void install() {
        item.install();
        bus.connect();
    }
    bool becomesHosted(bool isHosted) {
        return eventually([&] { return !hosted.empty() && hosted.back() == isHosted; });
    }

    QtSessionBus daemon;
    QtMainLoop loop;
    SessionBus bus{loop};
    QtStatusItem item{loop, bus, nullptr, Seconds(0)};
    std::vector<bool> hosted;
    std::vector<ScreenRect> clicks;
};

TEST_F(StatusItemOnABus, ShowsItselfAndPassesTheClicksPlaceOn) {
    StatusArea area(daemon);
    install();
    EXPECT_TRUE(hosted.empty()) << "nobody is told inside install()";
    ASSERT_TRUE(becomesHosted(true));
    const auto pixmaps = qdbus_cast<StatusNotifierPixmaps>(area.property(QStringLiteral("IconPixmap")));
    ASSERT_EQ(pixmaps.size(), 1);
    EXPECT_EQ(pixmaps[0].bytes, QByteArray("\x80\x11\x22\x33")) << "network order";
    const auto toolTip = qdbus_cast<StatusNotifierToolTip>(area.property(QStringLiteral("ToolTip")));
    EXPECT_EQ(toolTip.title, QStringLiteral("Tolvo"));
    EXPECT_EQ(area.click({40, 7}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(clicks, std::vector<ScreenRect>({{40, 7, 0, 0}}));
    EXPECT_EQ(area.call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"),
                        {QStringLiteral("org.kde.StatusNotifierItem")})
                  .type(),
              QDBusMessage::ReplyMessage);
}

TEST_F(StatusItemOnABus, AnswersWhatItDoesNotKnowWithAnError) {
    StatusArea area(daemon);
    install();
    ASSERT_TRUE(becomesHosted(true));
    const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
    const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
    for (const QDBusMessage& reply :
         {area.click({QStringLiteral("40"), 7}), area.click({}),
          area.call(itemInterface, QStringLiteral("Explode"), {1, 2}),
          area.call(properties, QStringLiteral("Get"), {itemInterface, QStringLiteral("Colour")}),
          area.call(properties, QStringLiteral("Get"), {5}),
          area.call(properties, QStringLiteral("Set"), {itemInterface, QStringLiteral("Id"), 5})})
        EXPECT_EQ(reply.type(), QDBusMessage::ErrorMessage);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(StatusItemOnABus, MovesIntoAnAreaThatAppearsLaterOrRestarts) {
    install();
    ASSERT_TRUE(becomesHosted(false));
    for (int restart = 0; restart < 2; ++restart) {
        auto area = std::make_unique<StatusArea>(daemon);
        ASSERT_TRUE(becomesHosted(true));
        EXPECT_EQ(area->items.size(), 1);
        area->setHost(false); // The watcher stays, but nobody draws.
        ASSERT_TRUE(becomesHosted(false));
        area->setHost(true);
        ASSERT_TRUE(becomesHosted(true));
        area.reset();
        ASSERT_TRUE(becomesHosted(false));
    }
}

TEST_F(StatusItemOnABus, SurvivesTheBusAndRegistersOnTheNextOne) {
    auto area = std::make_unique<StatusArea>(daemon);
    install();
    ASSERT_TRUE(becomesHosted(true));
    daemon.stop();
    ASSERT_TRUE(becomesHosted(false));
    area.reset();
    daemon.start();
    area = std::make_unique<StatusArea>(daemon);
    ASSERT_TRUE(becomesHosted(true));
    area->click({1, 2});
    EXPECT_EQ(clicks.size(), 1U);
    item.remove();
    EXPECT_EQ(area->click({1, 2}).type(), QDBusMessage::ErrorMessage) << "gone from the bus";
}

TEST_F(StatusItemOnABus, SaysSoWhenThereIsNoBusAtAll) {
    daemon.stop();
    install();
    EXPECT_TRUE(becomesHosted(false));
}

} // namespace
} // namespace tolvo::testing

#include "integration/core_location_authorizer.h"
#include "integration/location_permission_controller.h"
#include "integration/system_settings_location_opener.h"
#include "platform/linux/unguarded_location_manager.h"
#include "presentation/location_permission/location_permission_content.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvo::testing {
namespace {

class ScriptedLocationManager final : public LocationManager {
public:
    int authorizationStatus() const override { return rawStatus; }
    void requestWhenInUseAuthorization() override { ++requestCount; }

    int rawStatus = 0;
    int requestCount = 0;
};

/// Opens only the URL with this text; none when it is empty.
class ScriptedURLOpener final : public URLOpening {
public:
    bool open(const URL& url) override {
        tried.push_back(url.text());
        return url.text() == openable;
    }

    std::string openable;
    std::vector<std::string> tried;
};

class LocationPermissionTest : public ::testing::Test {
protected:
    ManualLoop loop;
    ScriptedLocationManager manager;
    ScriptedURLOpener urlOpener;
    CoreLocationAuthorizer authorizer{manager};
    SystemSettingsLocationOpener settingsOpener{urlOpener, *URL::parse("file:///settings")};
};

TEST_F(LocationPermissionTest, StatusDecidesRequestAndButton) {
    using enum LocationPermissionStatus;
    struct Case {
        int rawStatus;
        LocationPermissionStatus status;
        int requestsAtLaunch, requestsByButton;
        bool opensSettings, hasButton;
    };
    for (const Case& c : {Case{0, NotDetermined, 1, 1, false, true}, Case{1, Restricted, 0, 0, true, true},
                          Case{2, Denied, 0, 0, true, true}, Case{3, Authorized, 0, 0, false, false},
                          Case{4, Authorized, 0, 0, false, false}, Case{77, Restricted, 0, 0, true, true}}) {
        manager.rawStatus = c.rawStatus;
        LocationPermissionController controller(loop, authorizer, settingsOpener);
        EXPECT_EQ(controller.status.value(), c.status) << c.rawStatus;
        manager.requestCount = 0;
        controller.requestPermission();
        EXPECT_EQ(manager.requestCount, c.requestsAtLaunch) << c.rawStatus;
        manager.requestCount = 0;
        urlOpener.tried.clear();
        controller.performPrimaryAction();
        EXPECT_EQ(manager.requestCount, c.requestsByButton) << c.rawStatus;
        EXPECT_EQ(!urlOpener.tried.empty(), c.opensSettings) << c.rawStatus;
        EXPECT_EQ(locationPermissionContent(c.status).button.has_value(), c.hasButton) << c.rawStatus;
    }
}

TEST(UnguardedLocationManager, IsAuthorizedAndStaysSo) {
    UnguardedLocationManager manager;
    EXPECT_EQ(CoreLocationAuthorizer(manager).authorizationStatus(), LocationPermissionStatus::Authorized);
}

TEST_F(LocationPermissionTest, ChangesArriveByCallbackAndByRefresh) {
    std::optional<LocationPermissionController> controller(std::in_place, loop, authorizer, settingsOpener);
    manager.rawStatus = 2;
    manager.onDidChangeAuthorization();
    EXPECT_EQ(controller->status.value(), LocationPermissionStatus::NotDetermined) << "it hops to the loop";
    loop.runUntilIdle();
    EXPECT_EQ(controller->status.value(), LocationPermissionStatus::Denied);
    manager.rawStatus = 4;
    controller->refreshStatus();
    EXPECT_EQ(controller->status.value(), LocationPermissionStatus::Authorized);
    controller.reset();
    manager.onDidChangeAuthorization();
    loop.runUntilIdle();
}

TEST_F(LocationPermissionTest, SettingsLinksAreTriedInOrder) {
    EXPECT_FALSE(settingsOpener.openLocationSettings());
    const std::vector<std::string> all = urlOpener.tried;
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0],
              "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_LocationServices");
    EXPECT_EQ(all[2], "file:///settings");
    for (std::size_t i = 0; i < all.size(); ++i) {
        urlOpener.tried.clear();
        urlOpener.openable = all[i];
        EXPECT_TRUE(settingsOpener.openLocationSettings());
        EXPECT_EQ(urlOpener.tried.size(), i + 1);
    }
}

} // namespace
} // namespace tolvo::testing

#include "integration/core_location_authorizer.h"
#include "integration/location_permission_controller.h"
#include "integration/system_settings_location_opener.h"
#include "presentation/location_permission/location_permission_content.h"
#include "tests/support/manual_loop.h"
#include "tests/support/scripted_url_opener.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

class ScriptedLocationManager final : public LocationManager {
public:
    int authorizationStatus() const override { return rawStatus; }
    void requestWhenInUseAuthorization() override { ++requestCount; }

    int rawStatus = 0;
    int requestCount = 0;
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
    const auto check = [this](int rawStatus, LocationPermissionStatus status, bool isAsked, bool opensSettings) {
        manager.rawStatus = rawStatus;
        manager.requestCount = 0;
        urlOpener.tried.clear();
        LocationPermissionController controller(loop, authorizer, settingsOpener);
        EXPECT_EQ(controller.status.value(), status) << rawStatus;
        controller.requestPermission();
        controller.performPrimaryAction();
        EXPECT_EQ(manager.requestCount, isAsked ? 2 : 0) << rawStatus;
        EXPECT_EQ(!urlOpener.tried.empty(), opensSettings) << rawStatus;
        EXPECT_EQ(locationPermissionContent(status).button.has_value(), isAsked || opensSettings) << rawStatus;
    };
    check(0, NotDetermined, true, false);
    check(1, Restricted, false, true);
    check(2, Denied, false, true);
    check(3, Authorized, false, false);
    check(4, Authorized, false, false);
    check(77, Restricted, false, true);
}

TEST_F(LocationPermissionTest, ChangesArriveByCallbackAndByRefresh) {
    LocationPermissionController controller(loop, authorizer, settingsOpener);
    manager.rawStatus = 2;
    manager.onDidChangeAuthorization();
    EXPECT_EQ(controller.status.value(), LocationPermissionStatus::NotDetermined) << "it hops to the loop";
    loop.runUntilIdle();
    EXPECT_EQ(controller.status.value(), LocationPermissionStatus::Denied);
    manager.rawStatus = 4;
    controller.refreshStatus();
    EXPECT_EQ(controller.status.value(), LocationPermissionStatus::Authorized);
}

TEST_F(LocationPermissionTest, TheFirstSettingsLinkThatOpensEndsTheSearch) {
    EXPECT_FALSE(settingsOpener.openLocationSettings());
    ASSERT_EQ(urlOpener.tried.size(), 3U);
    urlOpener.openable = urlOpener.tried[1];
    EXPECT_TRUE(settingsOpener.openLocationSettings());
    EXPECT_EQ(urlOpener.tried.size(), 5U);
}

} // namespace
} // namespace tolvo::testing

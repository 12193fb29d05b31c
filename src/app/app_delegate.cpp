#include "app/app_delegate.h"

#include "app/process_environment.h"

#include <utility>

namespace tolvo {

namespace {

/// Set by test runners that load the program: then it builds and starts nothing.
bool isRunByTests() {
    return environmentVariable("XCTestConfigurationFilePath").has_value();
}

/// The settings program as such, where its page about the location isn't found.
URL settingsProgramURL() {
    return *URL::parse("file:///usr/share/applications/org.gnome.Settings.desktop");
}

} // namespace

AppDelegate::AppDelegate(MainLoop& loop, FrontEndFactory makeFrontEnd, Workspace* desktopWorkspace)
    : system_(loop, desktopWorkspace),
      appSettingsStore_(system_.userDefaults),
      locationAuthorizer_(system_.locationManager),
      urlOpener_(system_.workspace),
      locationSettingsOpener_(urlOpener_, settingsProgramURL()),
      locationPermissionController_(loop, locationAuthorizer_, locationSettingsOpener_),
      networkChangeObserver_(loop, system_.pathMonitor),
      sleepWakeObserver_(system_.sleepNotifications),
      isDesktopProgram_(desktopWorkspace != nullptr),
      makeFrontEnd_(std::move(makeFrontEnd)) {}

Monitoring& AppDelegate::monitoring() {
    if (!monitoring_)
        monitoring_.emplace(system_, networkChangeObserver_, sleepWakeObserver_, appSettingsStore_);
    return *monitoring_;
}

OnDemandTests& AppDelegate::onDemandTests() {
    if (!onDemandTests_)
        onDemandTests_.emplace(system_, monitoring());
    return *onDemandTests_;
}

DesktopIntegration& AppDelegate::desktopIntegration() {
    if (!desktopIntegration_)
        desktopIntegration_.emplace(system_, urlOpener_);
    return *desktopIntegration_;
}

void AppDelegate::applicationDidFinishLaunching() {
    if (isRunByTests())
        return;
    monitoring().pingMonitor.updateInternetTarget(appSettingsStore_.internetPingTarget());
    bindLastSSID();
    frontEnd_ = makeFrontEnd_(*this);
    frontEnd_->install();
    startControllers();
    if (isDesktopProgram_)
        desktopIntegration().start();
}

void AppDelegate::bindLastSSID() {
    // A simulated network is none that the user was in.
    if (system_.isAirSimulated)
        return;
    ssidSubscription_ = monitoring().wifiMonitor.latestSnapshot.subscribe([this](const auto& snapshot) {
        if (!snapshot || !snapshot->ssid || snapshot->ssid == boundSSID_)
            return;
        boundSSID_ = snapshot->ssid;
        appSettingsStore_.setLastSSID(snapshot->ssid);
    });
}

void AppDelegate::startControllers() {
    if (std::exchange(hasStartedControllers_, true))
        return;
    locationPermissionController_.requestPermission();
    monitoring().lifecycleController.start();
}

void AppDelegate::applicationWillTerminate() {
    if (isRunByTests())
        return;
    if (desktopIntegration_)
        desktopIntegration_->stop();
    if (std::exchange(hasStartedControllers_, false))
        monitoring().lifecycleController.shutdown();
    if (frontEnd_)
        frontEnd_->remove();
}

} // namespace tolvo

#include "app/desktop_front_end.h"

#include "presentation/channel_scan/channel_scan_view.h"
#include "presentation/diagnostics_export/diagnostics_export_view.h"
#include "presentation/panel/content_view.h"
#include "presentation/speed_test/speed_test_view.h"
#include "presentation/wifi_radar/wifi_radar_view.h"

#include <QGuiApplication>

namespace tolvo {

namespace {

BundleBuildFacts buildFacts(const BundleInformation& bundle) {
    return {.shortVersion = bundle.objectForInfoDictionaryKey("CFBundleShortVersionString"),
            .buildNumber = bundle.objectForInfoDictionaryKey("CFBundleVersion"),
            .buildID = bundle.objectForInfoDictionaryKey("BuildID"),
            .releaseDate = bundle.objectForInfoDictionaryKey("ReleaseDate"),
            .modificationDate = bundle.modificationDate()};
}

PanelShade panelShade(const QtAppearance& appearance) {
    const auto scheme = appearance.panelColorScheme();
    if (!scheme)
        return PanelShade::Unknown;
    return *scheme == ColorScheme::Dark ? PanelShade::Dark : PanelShade::Light;
}

LaunchAtLoginSources launchAtLoginSources(LaunchAtLoginController& controller) {
    return {.isEnabled = controller.isEnabled,
            .requiresApproval = controller.requiresApproval,
            .setEnabled = [&controller](bool isOn) -> std::expected<void, std::string> {
                if (const auto result = controller.setEnabled(isOn); !result)
                    return std::unexpected(result.error().description());
                return {};
            },
            .openLoginItemsSettings = [&controller] { controller.openLoginItemsSettings(); }};
}

AppUpdateSources appUpdateSources(AppUpdateController& controller) {
    return {.availableVersion = [&controller]() -> std::optional<std::string> {
                const auto update = controller.availableUpdate.value();
                return update ? std::optional(update->version) : std::nullopt;
            },
            .subscribe =
                [&controller](std::function<void()> onChange) {
                    return controller.availableUpdate.subscribe(
                        [onChange = std::move(onChange)](const auto&) { onChange(); });
                },
            .checkNow = [&controller] { return controller.checkNow(); },
            .openDownload = [&controller] { controller.openDownload(); }};
}

WiFiRadarController::Actions radarActions(OnDemandTests& tests) {
    return {.start = [&tests] { tests.startRadar(); }, .stop = [&tests] { tests.stopRadar(); }};
}

} // namespace

DesktopFrontEnd::DesktopFrontEnd(AppDelegate& delegate, QtMainLoop& loop, std::optional<ColorScheme> fixedScheme)
    : delegate_(delegate),
      loop_(loop),
      bus_(loop),
      appearance_(bus_, fixedScheme),
      rootEvents_(X11RootEvents::create(loop)),
      frames_(WindowFrameStore::userPath()),
      colorfulIconSettingsProvider_(delegate.appSettingsStore()),
      saveDialog_(bus_),
      exportController_(loop, delegate.onDemandTests().diagnosticsCollection, clipboard_, saveDialog_, fileWriter_,
                        [this](WallTime time) { return formats_.mediumDateAndTime(time); }),
      speedTestController_(loop, delegate.onDemandTests().speedTestSources(),
                           delegate.onDemandTests().speedTestActions(), speedTestServerTag(), speedTestNotice(),
                           formats_),
      channelScanController_(
          loop, delegate.onDemandTests().channelScanSources(),
          [&scan = delegate.onDemandTests().channelScanMonitor] { scan.toggleScan(); }, formats_),
      radarController_(loop, delegate.onDemandTests().wifiRadarSources(), radarActions(delegate.onDemandTests())),
      panel_(loop, panelSources(), settingsSources(), panelActions(), formats_),
      statusItem_(loop, bus_, rootEvents_.get()),
      popover_(rootEvents_.get(), [this] { return std::make_unique<ContentView>(panel_); }),
      clickMonitor_(loop, rootEvents_.get(), popover_),
      toolWindows_(loop, frames_, toolWindowContents()),
      statusIcon_([this] { return panelShade(appearance_); }),
      menuBar_({statusItem_, popover_, clickMonitor_, toolWindows_, statusIcon_},
               {delegate.monitoring().lifecycleController.isMonitoringEnabled,
                delegate.monitoring().healthAggregationController.healthState, colorfulIconSettingsProvider_},
               menuBarActions()) {
    appearance_.onChange = [this] { menuBar_.refreshStatusIcon(); };
    QObject::connect(
        qGuiApp, &QGuiApplication::applicationStateChanged, &appearance_, [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                delegate_.desktopIntegration().notificationCenter.post(ApplicationNotification::DidBecomeActive);
        });
}

DesktopFrontEnd::~DesktopFrontEnd() = default;

void DesktopFrontEnd::install() {
    menuBar_.installStatusItem();
    // Last, since it tells all who follow the bus, and the status item finds its area with it.
    bus_.connect();
}

void DesktopFrontEnd::remove() {
    menuBar_.removeStatusItem();
}

PanelSources DesktopFrontEnd::panelSources() {
    return {delegate_.monitoring().dashboardSources(), delegate_.locationPermissionController().status,
            delegate_.monitoring().connectionMonitor.history};
}

PanelActions DesktopFrontEnd::panelActions() {
    return {.setMonitoringEnabled =
                [this](bool isEnabled) { delegate_.monitoring().lifecycleController.setMonitoringEnabled(isEnabled); },
            .performPrimaryLocationAction = [this] { delegate_.locationPermissionController().performPrimaryAction(); },
            .onPreferredPopoverHeightChange = [this](double height) { menuBar_.setPreferredPopoverHeight(height); },
            .onOpenToolWindow = [this](ToolWindowKind kind) { menuBar_.openToolWindow(kind); },
            .onQuit = [this] { loop_.quit(); }};
}

SettingsSources DesktopFrontEnd::settingsSources() {
    MonitoringLifecycleController& lifecycle = delegate_.monitoring().lifecycleController;
    DesktopIntegration& integration = delegate_.desktopIntegration();
    return {.isBatteryFriendly = lifecycle.isBatteryFriendly,
            .setBatteryFriendly = [&lifecycle](bool isFriendly) { lifecycle.setBatteryFriendly(isFriendly); },
            .launchAtLogin = launchAtLoginSources(integration.launchAtLoginController),
            .appUpdate = appUpdateSources(integration.appUpdateController),
            .buildMetadata = appBuildMetadataDisplayInfo(buildFacts(delegate_.system().bundle), formats_)};
}

MenuBarActions DesktopFrontEnd::menuBarActions() {
    MonitoringLifecycleController& lifecycle = delegate_.monitoring().lifecycleController;
    return {.refreshLocationStatus = [this] { delegate_.locationPermissionController().refreshStatus(); },
            .setPopoverPresented = [&lifecycle](bool isPresented) { lifecycle.isPopoverPresented.set(isPresented); },
            .applyPollInterval = [&lifecycle] { lifecycle.applyPollInterval(); },
            .refreshMonitorsNow = [&lifecycle] { lifecycle.refreshMonitorsNow(); },
            .terminate = [this] { loop_.quit(); }};
}

std::map<ToolWindowKind, QtToolWindowFactory::ContentMaker> DesktopFrontEnd::toolWindowContents() {
    return {{ToolWindowKind::SpeedTest, [this] { return std::make_unique<SpeedTestView>(speedTestController_); }},
            {ToolWindowKind::ChannelScan, [this] { return std::make_unique<ChannelScanView>(channelScanController_); }},
            {ToolWindowKind::WiFiRadar, [this] { return std::make_unique<WiFiRadarView>(radarController_); }},
            {ToolWindowKind::DiagnosticsExport,
             [this] { return std::make_unique<DiagnosticsExportView>(exportController_); }}};
}

} // namespace tolvo

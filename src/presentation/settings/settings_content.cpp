#include "presentation/settings/settings_content.h"

namespace tolvo {

namespace {

GeneralSettingsContent generalContent(const SettingsState& state, const SettingsSources& sources) {
    const bool isBatteryFriendly = sources.isBatteryFriendly.value();
    GeneralSettingsContent content{
        .launchAtLogin = {"Launch at login", sources.launchAtLogin.isEnabled.value(), "",
                          "Start Tolvo automatically when you log in."},
        .launchAtLoginError = state.launchAtLoginError,
        .approval = std::nullopt,
        .sleepLine = "Monitoring also pauses automatically while your Mac sleeps.",
        .batteryFriendly = {"Battery friendly", isBatteryFriendly, isBatteryFriendly ? "Adaptive" : "Always Fast",
                            "Fast while open, slower in background."},
    };
    if (sources.launchAtLogin.requiresApproval.value()) {
        content.approval = SettingsNotice{"exclamationmark.triangle.fill", Tone::Orange,
                                          "Approval needed in System Settings.", "Open"};
    }
    return content;
}

AboutSettingsContent aboutContent(const SettingsState& state, const SettingsSources& sources) {
    AboutSettingsContent content{
        .line = "Live Wi-Fi diagnostics with signal, latency, channel and speed insights.",
        .rows = {{"Version", sources.buildMetadata.version},
                 {"Build ID", sources.buildMetadata.buildID},
                 {"Release Date", sources.buildMetadata.releaseDate}},
        .checkButton = "Check for Updates",
        .isChecking = state.isCheckingForUpdate,
        .update = std::nullopt,
    };
    if (const auto version = sources.appUpdate.availableVersion()) {
        content.update =
            SettingsNotice{"arrow.down.circle.fill", Tone::Blue, "Update available: " + *version, "Download"};
    }
    return content;
}

} // namespace

SettingsContent settingsContent(const SettingsState& state, const SettingsSources& sources) {
    using enum SettingsOverlayTab;
    return {
        .tabs = {{{General, "slider.horizontal.3", "General", state.selectedTab == General},
                  {About, "info.circle", "About", state.selectedTab == About}}},
        .selectedTab = state.selectedTab,
        .general = generalContent(state, sources),
        .about = aboutContent(state, sources),
    };
}

} // namespace tolvo

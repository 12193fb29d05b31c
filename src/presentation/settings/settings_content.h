#pragma once

#include "presentation/panel/overlay_header.h"
#include "presentation/rows/metric_rows.h"
#include "presentation/settings/settings_sources.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

enum class SettingsOverlayTab { General, About };

/// What the settings panel itself holds.
struct SettingsState {
    SettingsOverlayTab selectedTab = SettingsOverlayTab::General;
    std::optional<std::string> launchAtLoginError;
    bool isCheckingForUpdate = false;
};

struct SettingsTabButton {
    SettingsOverlayTab tab = SettingsOverlayTab::General;
    std::string symbolName;
    std::string title;
    bool isSelected = false;

    bool operator==(const SettingsTabButton&) const = default;
};

/// A switch with what it means.
struct SettingsSwitch {
    std::string title;
    bool isOn = false;
    /// Beside the switch; may be empty.
    std::string stateLabel;
    std::string line;

    bool operator==(const SettingsSwitch&) const = default;
};

/// Something that asks for the user's attention, with the button that deals with it.
struct SettingsNotice {
    std::string symbolName;
    Tone symbolColor = Tone::Primary;
    std::string text;
    std::string button;

    bool operator==(const SettingsNotice&) const = default;
};

struct GeneralSettingsContent {
    SettingsSwitch launchAtLogin;
    std::optional<std::string> launchAtLoginError;
    std::optional<SettingsNotice> approval;
    std::string sleepLine;
    SettingsSwitch batteryFriendly;

    bool operator==(const GeneralSettingsContent&) const = default;
};

struct AboutSettingsContent {
    std::string line;
    std::vector<MetricRow> rows;
    std::string checkButton;
    /// The check's button is disabled and a progress indicator turns.
    bool isChecking = false;
    std::optional<SettingsNotice> update;

    bool operator==(const AboutSettingsContent&) const = default;
};

struct SettingsContent {
    std::array<SettingsTabButton, 2> tabs;
    SettingsOverlayTab selectedTab = SettingsOverlayTab::General;
    GeneralSettingsContent general;
    AboutSettingsContent about;

    bool operator==(const SettingsContent&) const = default;
};

inline constexpr OverlayHeader settingsHeader{"Settings", "App preferences"};

SettingsContent settingsContent(const SettingsState& state, const SettingsSources& sources);

} // namespace tolvo

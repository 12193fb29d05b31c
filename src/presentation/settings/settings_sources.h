#pragma once

#include "core/async/published.h"
#include "core/async/task.h"
#include "presentation/settings/app_build_metadata_display_info.h"

#include <expected>
#include <functional>
#include <optional>
#include <string>

namespace tolvo {

/// The login item, as the settings show and change it.
struct LaunchAtLoginSources {
    Published<bool>& isEnabled;
    Published<bool>& requiresApproval;
    /// The error is in words for the user.
    std::function<std::expected<void, std::string>(bool isEnabled)> setEnabled;
    std::function<void()> openLoginItemsSettings;
};

/// The update check, as the settings show and use it.
struct AppUpdateSources {
    /// The version of the update that is there, before anything was shown and after each change.
    std::function<std::optional<std::string>()> availableVersion;
    std::function<Subscription(std::function<void()> onChange)> subscribe;
    std::function<Task<void>()> checkNow;
    std::function<void()> openDownload;
};

/// What the settings panel shows and changes. What it belongs to outlives whoever holds this.
struct SettingsSources {
    Published<bool>& isBatteryFriendly;
    std::function<void(bool isBatteryFriendly)> setBatteryFriendly;
    LaunchAtLoginSources launchAtLogin;
    AppUpdateSources appUpdate;
    AppBuildMetadataDisplayInfo buildMetadata;
};

} // namespace tolvo

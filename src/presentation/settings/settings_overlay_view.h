#pragma once

#include "presentation/panel/overlay_view.h"
#include "presentation/settings/settings_content.h"

#include <array>

namespace tolvo {

class AboutSettingsView;
class GeneralSettingsView;
class SettingsTabView;

/// The user's switches and the program's build facts.
class SettingsOverlayView final : public OverlayView {
public:
    explicit SettingsOverlayView(PanelController& controller, QWidget* parent = nullptr);

    void show(const SettingsContent& content);

private:
    std::array<SettingsTabView*, 2> tabs_;
    GeneralSettingsView* general_;
    AboutSettingsView* about_;
};

} // namespace tolvo

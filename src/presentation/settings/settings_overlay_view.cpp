#include "presentation/settings/settings_overlay_view.h"

#include "presentation/panel/panel_controller.h"
#include "presentation/rows/style_view.h"
#include "presentation/settings/about_settings_view.h"
#include "presentation/settings/general_settings_view.h"
#include "presentation/settings/settings_tab_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tolvo {

SettingsOverlayView::SettingsOverlayView(PanelController& controller, QWidget* parent)
    : OverlayView(controller, PanelRoute::Settings, settingsHeader, parent),
      tabs_{new SettingsTabView(this), new SettingsTabView(this)},
      general_(new GeneralSettingsView(controller.settings(), this)),
      about_(new AboutSettingsView(controller.settings(), this)) {
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(spacing::item);
    constexpr std::array kinds{SettingsOverlayTab::General, SettingsOverlayTab::About};
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        tabs_[i]->onSelect = [&controller, tab = kinds[i]] { controller.settings().selectTab(tab); };
        buttons->addWidget(tabs_[i]);
    }
    body().addLayout(buttons);
    body().addWidget(general_);
    body().addWidget(about_);
    body().addStretch();
}

void SettingsOverlayView::show(const SettingsContent& content) {
    for (std::size_t i = 0; i < tabs_.size(); ++i)
        tabs_[i]->show(content.tabs[i]);
    general_->setVisible(content.selectedTab == SettingsOverlayTab::General);
    about_->setVisible(content.selectedTab == SettingsOverlayTab::About);
    general_->show(content.general);
    about_->show(content.about);
}

} // namespace tolvo

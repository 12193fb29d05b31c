#include "presentation/settings/general_settings_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/inline_message_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/settings/settings_controller.h"
#include "presentation/settings/settings_rows_view.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tolvo {

GeneralSettingsView::GeneralSettingsView(SettingsController& controller, QWidget* parent)
    : QWidget(parent),
      launchAtLogin_(new SettingsSwitchView),
      error_(new InlineMessageView),
      approval_(new SettingsNoticeView),
      batteryFriendly_(new SettingsSwitchView) {
    launchAtLogin_->onToggle = [&controller](bool isOn) { controller.setLaunchAtLogin(isOn); };
    approval_->onAction = [&controller] { controller.openLoginItemsSettings(); };
    batteryFriendly_->onToggle = [&controller](bool isOn) { controller.setBatteryFriendly(isOn); };
    auto* login = new CardView("", this);
    login->rows().addWidget(launchAtLogin_);
    login->rows().addWidget(error_);
    login->rows().addWidget(approval_);
    sleepLine_ = makeSettingsLine(this);
    auto* battery = new CardView("", this);
    battery->rows().addWidget(batteryFriendly_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::group);
    layout->addWidget(login);
    layout->addWidget(sleepLine_);
    layout->addWidget(battery);
    layout->addStretch();
}

void GeneralSettingsView::show(const GeneralSettingsContent& content) {
    launchAtLogin_->show(content.launchAtLogin);
    error_->setVisible(content.launchAtLoginError.has_value());
    error_->show({content.launchAtLoginError.value_or(""), Tone::Red});
    approval_->show(content.approval);
    sleepLine_->setText(toQString(content.sleepLine));
    batteryFriendly_->show(content.batteryFriendly);
}

} // namespace tolvo

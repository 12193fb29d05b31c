#pragma once

#include "presentation/settings/settings_content.h"

#include <QWidget>

class QLabel;

namespace tolvo {

class InlineMessageView;
class SettingsController;
class SettingsNoticeView;
class SettingsSwitchView;

/// The settings' switches.
class GeneralSettingsView final : public QWidget {
public:
    explicit GeneralSettingsView(SettingsController& controller, QWidget* parent = nullptr);

    void show(const GeneralSettingsContent& content);

private:
    SettingsSwitchView* launchAtLogin_;
    InlineMessageView* error_;
    SettingsNoticeView* approval_;
    QLabel* sleepLine_ = nullptr;
    SettingsSwitchView* batteryFriendly_;
};

} // namespace tolvo

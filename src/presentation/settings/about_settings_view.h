#pragma once

#include "presentation/settings/settings_content.h"

#include <QWidget>

#include <vector>

class QLabel;

namespace tolvo {

class CardView;
class MetricRowView;
class ProgressIndicatorView;
class SettingsController;
class SettingsNoticeView;
class TextButtonView;

/// The build's facts and the check for updates.
class AboutSettingsView final : public QWidget {
public:
    explicit AboutSettingsView(SettingsController& controller, QWidget* parent = nullptr);

    void show(const AboutSettingsContent& content);

private:
    QLabel* line_;
    CardView* facts_;
    std::vector<MetricRowView*> rows_;
    TextButtonView* check_;
    ProgressIndicatorView* progress_;
    CardView* notice_;
    SettingsNoticeView* update_;
};

} // namespace tolvo

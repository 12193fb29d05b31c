#pragma once

#include "presentation/rows/control_view.h"
#include "presentation/settings/settings_content.h"

#include <functional>

namespace tolvo {

/// One of the buttons that choose what the settings show. For assistive programs it is a tab, selected or not.
class SettingsTabView final : public ControlView {
public:
    explicit SettingsTabView(QWidget* parent = nullptr);

    std::function<void()> onSelect;

    void show(const SettingsTabButton& tab);
    bool isSelected() const { return tab_.isSelected; }
    QSize sizeHint() const override;

protected:
    void paintControl(QPainter& painter) override;

private:
    SettingsTabButton tab_;
};

} // namespace tolvo

#pragma once

#include "presentation/rows/control_view.h"
#include "presentation/settings/settings_content.h"

#include <functional>

namespace tolvo {

/// One of the buttons that choose what the settings show.
class SettingsTabView final : public ControlView {
public:
    explicit SettingsTabView(QWidget* parent = nullptr);

    std::function<void()> onSelect;

    void show(const SettingsTabButton& tab);
    QSize sizeHint() const override;

protected:
    void paintControl(QPainter& painter) override;
    void nextCheckState() override { onSelect(); }

private:
    SettingsTabButton tab_;
};

} // namespace tolvo

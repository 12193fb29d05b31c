#pragma once

#include "presentation/panel/panel_route.h"
#include "presentation/rows/tone.h"

#include <QWidget>

#include <functional>

namespace tolvo {

class BadgeView;

/// The brand, the health, and the ways to the toolbox and the settings.
class DashboardHeaderView final : public QWidget {
public:
    explicit DashboardHeaderView(QWidget* parent = nullptr);

    std::function<void(PanelRoute)> onOpenPanel;

    void show(const Badge& health);

private:
    BadgeView* badge_ = nullptr;
};

} // namespace tolvo

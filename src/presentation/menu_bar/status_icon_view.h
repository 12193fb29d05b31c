#pragma once

#include "presentation/menu_bar/status_icon_rendering.h"

#include <functional>
#include <optional>

class QColor;

namespace tolvo {

/// Unknown where neither the desktop nor the area says what its panel looks like.
enum class PanelShade { Light, Dark, Unknown };

/// Draws the status icon for the desktop's panel.
class StatusIconView final : public StatusIconRendering {
public:
    explicit StatusIconView(std::function<PanelShade()> panelShade) : panelShade_(std::move(panelShade)) {}

    std::optional<ScaledImage> render(const StatusIconContent& content) override;

private:
    std::function<PanelShade()> panelShade_;
    StatusIconContent drawnContent_;
    PanelShade drawnShade_ = PanelShade::Dark;
    ScaledImage drawn_;
};

} // namespace tolvo

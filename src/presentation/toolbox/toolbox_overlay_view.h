#pragma once

#include "presentation/panel/overlay_view.h"

namespace tolvo {

/// The list of tools.
class ToolboxOverlayView final : public OverlayView {
public:
    explicit ToolboxOverlayView(PanelController& controller, QWidget* parent = nullptr);
};

} // namespace tolvo

#pragma once

#include "platform/services/raster_image.h"
#include "presentation/menu_bar/menu_bar_content.h"

#include <optional>

namespace tolvo {

/// Draws the status icon.
class StatusIconRendering {
public:
    StatusIconRendering(const StatusIconRendering&) = delete;
    StatusIconRendering& operator=(const StatusIconRendering&) = delete;
    virtual ~StatusIconRendering() = default;

    /// 18 by 18 points at each scale; nothing when the badge's symbol is not there.
    virtual std::optional<ScaledImage> render(const StatusIconContent& content) = 0;

protected:
    StatusIconRendering() = default;
};

} // namespace tolvo

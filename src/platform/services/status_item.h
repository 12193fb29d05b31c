#pragma once

#include "platform/services/raster_image.h"
#include "platform/services/screen_geometry.h"

#include <functional>
#include <string>

namespace tolvo {

/// The program's item in the desktop's status area. Where there is no area, an installed item waits for one and moves
/// in when it appears or restarts. Main thread only.
class StatusItem {
public:
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// A click on the item, with the icon's place on the screen, or the click's as far as only that is known.
    std::function<void(ScreenRect place)> onActivate;
    /// An area took the item, or there is none (any more). Told once soon after install(), then on each change.
    std::function<void(bool isHosted)> onHostChange;

    virtual void install() = 0;
    virtual void remove() = 0;
    virtual void setImage(const ScaledImage& image) = 0;
    virtual void setToolTip(const std::string& text) = 0;

protected:
    StatusItem() = default;
};

} // namespace tolvo

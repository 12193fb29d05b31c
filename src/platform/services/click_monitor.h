#pragma once

#include "core/async/main_loop.h"

#include <functional>

namespace tolvo {

/// Where a click in this program went. The popover's own menus and tool tips count as the popover.
enum class ClickedWindow { Popover, StatusItem, Other };

/// Hears left and right mouse buttons go down, until the registration goes. The clicks themselves go on unchanged.
/// Main thread only.
class ClickMonitor {
public:
    ClickMonitor(const ClickMonitor&) = delete;
    ClickMonitor& operator=(const ClickMonitor&) = delete;
    virtual ~ClickMonitor() = default;

    /// Clicks in other programs. They are told with a short delay, so that a click on the status item, which another
    /// program draws, has arrived by its own way before.
    virtual LoopRegistration addGlobalMonitor(std::function<void()> onMouseDown) = 0;
    /// Clicks in this program, at once.
    virtual LoopRegistration addLocalMonitor(std::function<void(ClickedWindow)> onMouseDown) = 0;

protected:
    ClickMonitor() = default;
};

} // namespace tolvo

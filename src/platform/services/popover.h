#pragma once

#include "platform/services/screen_geometry.h"

#include <functional>
#include <optional>

namespace tolvo {

/// A panel beside the status item that doesn't close by itself. Main thread only.
class Popover {
public:
    Popover(const Popover&) = delete;
    Popover& operator=(const Popover&) = delete;
    virtual ~Popover() = default;

    /// After every closing, also by close(); not inside show().
    std::function<void()> onDidClose;

    /// Shows it beside the place, whole on that screen, and gives it the keyboard. Without a place it is an ordinary
    /// window with a frame, which the user can close.
    virtual void show(std::optional<ScreenRect> place) = 0;
    /// Before all other windows, also when it was hidden behind them or minimised, and with the keyboard.
    virtual void orderFront() = 0;
    virtual void close() = 0;
    virtual bool isShown() const = 0;
    virtual ContentSize contentSize() const = 0;
    virtual void setContentSize(ContentSize size) = 0;

protected:
    Popover() = default;
};

} // namespace tolvo

#pragma once

#include "core/async/main_loop.h"

#include <cstdint>
#include <functional>
#include <memory>

struct xcb_connection_t;

namespace tolvo {

/// What an X server tells about the desktop as a whole, over a connection of our own: mouse buttons wherever they go
/// down, and the old kind of status area coming and going. Main thread only.
class X11RootEvents final {
public:
    /// Nothing where the application is not on an X server.
    static std::unique_ptr<X11RootEvents> create(MainLoop& loop);
    X11RootEvents(const X11RootEvents&) = delete;
    X11RootEvents& operator=(const X11RootEvents&) = delete;
    ~X11RootEvents();

    enum class ButtonMotion { Down, Up };
    /// Left and right buttons in any program, this one included, while buttons are watched.
    std::function<void(ButtonMotion)> onButton;
    std::function<void()> onTrayManagerChange;

    /// Costs a wake-up for each click anywhere, so only while somebody needs it.
    void watchButtons(bool isWatching);
    /// Whether a status area of the XEmbed kind is there.
    bool hasTrayManager();
    /// Whether windows can have transparent corners.
    bool hasCompositor();

private:
    X11RootEvents(MainLoop& loop, xcb_connection_t* connection, int screen);
    void readEvents();
    std::uint32_t internedAtom(const char* name) const;
    std::uint32_t selectionOwner(std::uint32_t selection) const;
    void followTrayManager();

    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
    std::uint8_t inputExtension_ = 0;
    std::uint32_t traySelection_ = 0;
    std::uint32_t managerAtom_ = 0;
    std::uint32_t compositorSelection_ = 0;
    std::uint32_t trayManager_ = 0;
    LoopRegistration watch_;
};

} // namespace tolvo

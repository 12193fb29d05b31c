#pragma once

#include "platform/services/screen_geometry.h"

#include <memory>
#include <optional>
#include <string>

namespace tolvo {

enum class ToolWindowKind { WiFiRadar, SpeedTest, ChannelScan, DiagnosticsExport };
enum class WindowResizing { Fixed, Resizable };

/// How a tool window is built. It always has a title and can be closed and minimised.
struct ToolWindowDescription {
    ToolWindowKind kind = ToolWindowKind::WiFiRadar;
    std::string title;
    WindowResizing resizing = WindowResizing::Resizable;
    ContentSize contentSize;
    ContentSize minimumSize;
    std::optional<ContentSize> maximumSize;
    /// The name under which its frame is kept from run to run.
    std::string frameName;

    bool operator==(const ToolWindowDescription&) const = default;
};

/// A window that closing only hides: its content keeps its state. Main thread only.
class ToolWindow {
public:
    ToolWindow(const ToolWindow&) = delete;
    ToolWindow& operator=(const ToolWindow&) = delete;
    virtual ~ToolWindow() = default;

    /// Takes the frame that was saved under the name, brought onto a screen that is there; false if there is none.
    virtual bool setFrameUsingName(const std::string& name) = 0;
    /// Saves the frame under the name from now on, whenever the user has changed it.
    virtual void setFrameAutosaveName(const std::string& name) = 0;
    virtual void center() = 0;
    /// Shows it in front of all others, with the keyboard.
    virtual void makeKeyAndOrderFront() = 0;

protected:
    ToolWindow() = default;
};

class ToolWindowMaking {
public:
    ToolWindowMaking(const ToolWindowMaking&) = delete;
    ToolWindowMaking& operator=(const ToolWindowMaking&) = delete;
    virtual ~ToolWindowMaking() = default;

    /// A window that isn't shown yet, with the content of its kind in it.
    virtual std::unique_ptr<ToolWindow> makeToolWindow(const ToolWindowDescription& description) = 0;

protected:
    ToolWindowMaking() = default;
};

} // namespace tolvo

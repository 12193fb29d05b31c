#pragma once

#include "platform/services/click_monitor.h"
#include "platform/services/popover.h"
#include "platform/services/status_item.h"
#include "platform/services/tool_window.h"

#include <string>
#include <utility>
#include <vector>

namespace tolvo::testing {

/// What the desktop was asked for, in order.
using DesktopLog = std::vector<std::string>;

struct RecordingStatusItem final : StatusItem {
    explicit RecordingStatusItem(DesktopLog& log) : log(log) {}
    void install() override { log.push_back("item installed"); }
    void remove() override { log.push_back("item removed"); }
    void setImage(const ScaledImage& image) override { images.push_back(image); }
    void setToolTip(const std::string& text) override { log.push_back("tool tip " + text); }

    DesktopLog& log;
    std::vector<ScaledImage> images;
};

struct RecordingPopover final : Popover {
    explicit RecordingPopover(DesktopLog& log) : log(log) {}
    void show(std::optional<ScreenRect> shownPlace) override {
        place = shownPlace;
        isOpen = true;
        log.push_back(place ? "popover shown" : "window shown");
    }
    void orderFront() override { log.push_back("popover in front"); }
    void close() override {
        isOpen = false;
        log.push_back("popover closed");
        onDidClose();
    }
    bool isShown() const override { return isOpen; }
    ContentSize contentSize() const override { return size; }
    void setContentSize(ContentSize newSize) override {
        size = newSize;
        ++sizeChanges;
    }

    DesktopLog& log;
    std::optional<ScreenRect> place;
    bool isOpen = false;
    ContentSize size;
    int sizeChanges = 0;
};

struct ManualClickMonitor final : ClickMonitor {
    LoopRegistration addGlobalMonitor(std::function<void()> onMouseDown) override {
        clickOutside = std::move(onMouseDown);
        return LoopRegistration([this] { clickOutside = nullptr; });
    }
    LoopRegistration addLocalMonitor(std::function<void(ClickedWindow)> onMouseDown) override {
        clickInside = std::move(onMouseDown);
        return LoopRegistration([this] { clickInside = nullptr; });
    }
    /// As an event would come: the monitor may go while it runs.
    void click(ClickedWindow window) {
        if (const auto handler = clickInside)
            handler(window);
    }

    std::function<void()> clickOutside;
    std::function<void(ClickedWindow)> clickInside;
};

struct RecordingToolWindow final : ToolWindow {
    RecordingToolWindow(DesktopLog& log, bool hasSavedFrame) : log(log), hasSavedFrame(hasSavedFrame) {}
    bool setFrameUsingName(const std::string& name) override {
        log.push_back("frame of " + name);
        return hasSavedFrame;
    }
    void setFrameAutosaveName(const std::string& name) override { log.push_back("autosave " + name); }
    void center() override { log.push_back("centred"); }
    void makeKeyAndOrderFront() override { log.push_back("in front"); }

    DesktopLog& log;
    bool hasSavedFrame;
};

struct RecordingToolWindows final : ToolWindowMaking {
    explicit RecordingToolWindows(DesktopLog& log) : log(log) {}
    std::unique_ptr<ToolWindow> makeToolWindow(const ToolWindowDescription& description) override {
        log.push_back("built " + description.title);
        return std::make_unique<RecordingToolWindow>(log, hasSavedFrames);
    }

    DesktopLog& log;
    bool hasSavedFrames = false;
};

} // namespace tolvo::testing

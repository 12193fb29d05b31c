#pragma once

#include "platform/qt/x11_root_events.h"
#include "platform/services/popover.h"

#include <functional>
#include <memory>

class QWidget;
class QWindow;

namespace tolvo {

/// The popover as a frameless tool window on top of others. Qt's own popup windows lose typed text, close with a combo
/// box, and open again on the click that closes them.
class QtPopover final : public Popover {
public:
    /// makeContent is called when it is first opened. rootEvents may be null.
    QtPopover(X11RootEvents* rootEvents, std::function<std::unique_ptr<QWidget>()> makeContent);
    ~QtPopover() override;

    void show(std::optional<ScreenRect> place) override;
    void orderFront() override;
    void close() override;
    bool isShown() const override;
    ContentSize contentSize() const override { return contentSize_; }
    void setContentSize(ContentSize size) override;

    /// Whether the window is the popover's, or that of a menu or tool tip of it.
    bool isOwnWindow(const QWindow* window) const;

private:
    class Window;

    void build();
    void takePlace();

    X11RootEvents* rootEvents_;
    std::function<std::unique_ptr<QWidget>()> makeContent_;
    ContentSize contentSize_;
    std::optional<ScreenRect> place_;
    std::unique_ptr<Window> window_;
};

} // namespace tolvo

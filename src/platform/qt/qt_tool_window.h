#pragma once

#include "core/async/main_loop.h"
#include "platform/qt/window_frame_store.h"
#include "platform/services/tool_window.h"

#include <functional>
#include <map>
#include <memory>

class QWidget;

namespace tolvo {

/// Builds tool windows with a frame of the desktop's own.
class QtToolWindowFactory final : public ToolWindowMaking {
public:
    using ContentMaker = std::function<std::unique_ptr<QWidget>()>;

    /// A window whose kind has no maker is empty.
    QtToolWindowFactory(MainLoop& loop, WindowFrameStore& frames, std::map<ToolWindowKind, ContentMaker> contents)
        : loop_(loop), frames_(frames), contents_(std::move(contents)) {}

    std::unique_ptr<ToolWindow> makeToolWindow(const ToolWindowDescription& description) override;

private:
    MainLoop& loop_;
    WindowFrameStore& frames_;
    std::map<ToolWindowKind, ContentMaker> contents_;
};

} // namespace tolvo

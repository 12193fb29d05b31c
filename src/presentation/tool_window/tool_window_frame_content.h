#pragma once

#include <string_view>

namespace tolvo {

/// What a tool window says at all times, and while it has nothing to show yet.
struct ToolWindowFrameContent {
    std::string_view symbolName;
    std::string_view title;
    std::string_view subtitle;
    std::string_view emptyTitle;
    std::string_view emptyText;
};

} // namespace tolvo

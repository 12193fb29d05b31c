#pragma once

#include <string_view>

namespace tolvo {

/// The head of an overlay, under its back button.
struct OverlayHeader {
    std::string_view title;
    std::string_view subtitle;

    bool operator==(const OverlayHeader&) const = default;
};

} // namespace tolvo

#pragma once

#include <cstdint>
#include <vector>

namespace tolvo {

/// A picture as pixels, row by row from the top: 0xAARRGGBB, not multiplied with its alpha.
struct RasterImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    bool operator==(const RasterImage&) const = default;
};

/// The same picture at several scales, smallest first.
using ScaledImage = std::vector<RasterImage>;

} // namespace tolvo

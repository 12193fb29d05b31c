#pragma once

#include "core/model/url.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tolvo {

/// Where a speed test's bytes come from and go to; nothing where no URL can be made.
struct SpeedTestEndpoint {
    /// Gives the URL that answers with that many bytes.
    std::function<std::optional<URL>(std::int64_t bytes)> downloadURLFactory;
    std::optional<URL> uploadURL;
};

/// The public service that the build names.
std::optional<URL> defaultSpeedTestURL();

/// The endpoint below a base such as https://speed.example: its /__down?bytes=N and its /__up.
SpeedTestEndpoint speedTestEndpoint(const std::optional<URL>& baseURL);

} // namespace tolvo

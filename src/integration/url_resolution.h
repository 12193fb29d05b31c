#pragma once

#include "core/model/url.h"

#include <optional>
#include <string_view>

namespace tolvo {

/// What a reference without scheme and host means below an absolute base (RFC 3986, section 5.2).
std::optional<URL> resolved(const URL& reference, const URL& base);

/// The URL with a path that ends in a solidus.
URL asFolder(const URL& url);

/// The URL of something in a folder; characters that can't stand in a path are percent-encoded, the solidus too.
std::optional<URL> appendingPathComponent(const URL& folder, std::string_view component);

bool isWebScheme(std::string_view lowerCaseScheme);

} // namespace tolvo

#pragma once

#include "core/model/url.h"

namespace tolvo {

/// Opens a URL in whatever program is meant for it.
class URLOpening {
public:
    URLOpening(const URLOpening&) = delete;
    URLOpening& operator=(const URLOpening&) = delete;
    virtual ~URLOpening() = default;

    /// Whether it was opened.
    virtual bool open(const URL& url) = 0;

protected:
    URLOpening() = default;
};

} // namespace tolvo

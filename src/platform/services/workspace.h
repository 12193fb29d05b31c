#pragma once

#include "core/model/url.h"

namespace tolvo {

/// Opens things in the user's other programs. Main thread only.
class Workspace {
public:
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Whether a program took the URL.
    virtual bool openURL(const URL& url) = 0;

protected:
    Workspace() = default;
};

} // namespace tolvo

#pragma once

#include "integration/url_opening.h"
#include "platform/services/workspace.h"

namespace tolvo {

/// Opens URLs through the Workspace service.
class WorkspaceURLOpener final : public URLOpening {
public:
    explicit WorkspaceURLOpener(Workspace& workspace) : workspace_(workspace) {}

    bool open(const URL& url) override { return workspace_.openURL(url); }

private:
    Workspace& workspace_;
};

} // namespace tolvo

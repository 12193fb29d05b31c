#pragma once

#include "platform/services/workspace.h"

namespace tolvo {

/// Hands web addresses, and files that exist, to the user's programs. Any other scheme is refused: it could start
/// whatever has registered itself for it.
class QtWorkspace final : public Workspace {
public:
    bool openURL(const URL& url) override;
};

} // namespace tolvo

#pragma once

#include "platform/services/process_service.h"
#include "platform/services/workspace.h"

#include <list>
#include <memory>

namespace tolvo {

/// Opens web addresses and files with xdg-open, in whatever program the user chose for them. Any other scheme is
/// refused: it could start whatever has registered itself for it. So is a relative reference, which could be an option.
class XdgWorkspace final : public Workspace {
public:
    explicit XdgWorkspace(ProcessService& processService) : processService_(processService) {}

    /// Whether xdg-open could be started; what it then makes of the URL isn't waited for.
    bool openURL(const URL& url) override;

private:
    ProcessService& processService_;
    std::list<std::unique_ptr<RunningProcess>> openers_;
};

} // namespace tolvo

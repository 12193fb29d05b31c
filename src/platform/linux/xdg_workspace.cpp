#include "platform/linux/xdg_workspace.h"

#include <utility>

namespace tolvo {

bool XdgWorkspace::openURL(const URL& url) {
    // A relative reference would be taken for a file or an option.
    if (!url.isAbsolute())
        return false;
    const auto position = openers_.emplace(openers_.end());
    auto opener = processService_.launch("/usr/bin/xdg-open", {url.text()},
                                         [this, position](const ProcessTermination&) { openers_.erase(position); });
    if (!opener) {
        openers_.erase(position);
        return false;
    }
    *position = *std::move(opener);
    return true;
}

} // namespace tolvo

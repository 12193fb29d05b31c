#include "platform/linux/xdg_workspace.h"

#include <utility>

namespace tolvo {

namespace {

bool isOpenable(const URL& url) {
    if (url.scheme() == "http" || url.scheme() == "https")
        return !url.host().empty();
    return url.scheme() == "file" && url.host().empty();
}

} // namespace

bool XdgWorkspace::openURL(const URL& url) {
    if (!isOpenable(url))
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

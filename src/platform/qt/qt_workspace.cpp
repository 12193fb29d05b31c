#include "platform/qt/qt_workspace.h"

#include "platform/qt/qt_text.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace tolvo {

namespace {

bool isOpenable(const URL& url, const QUrl& parsed) {
    if (url.scheme() == "http" || url.scheme() == "https")
        return parsed.isValid() && !url.host().empty();
    return url.scheme() == "file" && url.host().empty() && QFileInfo::exists(parsed.toLocalFile());
}

} // namespace

bool QtWorkspace::openURL(const URL& url) {
    const QUrl parsed(toQString(url.text()), QUrl::StrictMode);
    return isOpenable(url, parsed) && QDesktopServices::openUrl(parsed);
}

} // namespace tolvo

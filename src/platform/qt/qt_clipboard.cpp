#include "platform/qt/qt_clipboard.h"

#include "platform/qt/qt_text.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tolvo {

bool QtClipboard::setText(const std::string& text) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->setText(toQString(text));
    return clipboard->ownsClipboard();
}

} // namespace tolvo

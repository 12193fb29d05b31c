#include "platform/qt/display.h"

#include <QtGlobal>
#include <xcb/xcb.h>

namespace tolvo {

namespace {

bool answersXServer() {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isThere = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isThere;
}

} // namespace

bool hasDisplay() {
    // Whoever chooses how to draw, such as into memory, needs none.
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return true;
    return !qEnvironmentVariableIsEmpty("DISPLAY") && answersXServer();
}

} // namespace tolvo

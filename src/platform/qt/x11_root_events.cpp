#include "platform/qt/x11_root_events.h"

#include <QGuiApplication>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace tolvo {

namespace {

template<class T>
using Reply = std::unique_ptr<T, decltype([](T* reply) { std::free(reply); })>;

constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t rightButton = 3;

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

/// The extension's number, if the server tells of buttons also while another program has the pointer.
std::uint8_t inputExtension(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return 0;
    const Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    const bool isRecent =
        version && (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 1));
    return isRecent ? extension->major_opcode : std::uint8_t{0};
}

} // namespace

std::unique_ptr<X11RootEvents> X11RootEvents::create(MainLoop& loop) {
    // Beside a Wayland desktop there may be an X server too, which sees the clicks in its own programs only.
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        return nullptr;
    int screen = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screen);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11RootEvents>(new X11RootEvents(loop, connection, screen));
}

X11RootEvents::X11RootEvents(MainLoop& loop, xcb_connection_t* connection, int screen)
    : connection_(connection), root_(screenOf(connection, screen)->root), inputExtension_(inputExtension(connection)) {
    const std::string number = std::to_string(screen);
    traySelection_ = internedAtom(("_NET_SYSTEM_TRAY_S" + number).c_str());
    compositorSelection_ = internedAtom(("_NET_WM_CM_S" + number).c_str());
    managerAtom_ = internedAtom("MANAGER");
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);
    followTrayManager();
    watch_ = loop.watch(xcb_get_file_descriptor(connection_), DescriptorEvent::Readable, [this] { readEvents(); });
}

X11RootEvents::~X11RootEvents() {
    watch_.reset();
    xcb_disconnect(connection_);
}

void X11RootEvents::watchButtons(bool isWatching) {
    if (inputExtension_ == 0)
        return;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t events;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                isWatching ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE
                           : 0U};
    xcb_input_xi_select_events(connection_, root_, 1, &selection.head);
    xcb_flush(connection_);
}

bool X11RootEvents::hasTrayManager() {
    return trayManager_ != XCB_NONE;
}

bool X11RootEvents::hasCompositor() {
    return selectionOwner(compositorSelection_) != XCB_NONE;
}

void X11RootEvents::readEvents() {
    bool isTrayManagerNews = false;
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        const int type = event->response_type & 0x7f;
        if (type == XCB_GE_GENERIC) {
            const auto* raw = reinterpret_cast<const xcb_input_raw_button_press_event_t*>(event.get());
            const bool isButton = raw->detail == leftButton || raw->detail == rightButton;
            if (raw->extension == inputExtension_ && isButton && onButton)
                onButton(raw->event_type == XCB_INPUT_RAW_BUTTON_PRESS ? ButtonMotion::Down : ButtonMotion::Up);
        } else if (type == XCB_CLIENT_MESSAGE) {
            const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
            isTrayManagerNews |= message->type == managerAtom_ && message->data.data32[1] == traySelection_;
        } else if (type == XCB_DESTROY_NOTIFY) {
            const auto* destroyed = reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get());
            isTrayManagerNews |= destroyed->window == trayManager_;
        }
    }
    if (xcb_connection_has_error(connection_) != 0)
        watch_.reset(); // A broken descriptor stays ready for ever.
    else if (isTrayManagerNews)
        followTrayManager();
    if (isTrayManagerNews && onTrayManagerChange)
        onTrayManagerChange();
}

std::uint32_t X11RootEvents::internedAtom(const char* name) const {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_, xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : XCB_NONE;
}

std::uint32_t X11RootEvents::selectionOwner(std::uint32_t selection) const {
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, selection), nullptr));
    return reply ? reply->owner : XCB_NONE;
}

void X11RootEvents::followTrayManager() {
    trayManager_ = selectionOwner(traySelection_);
    if (trayManager_ != XCB_NONE) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, trayManager_, XCB_CW_EVENT_MASK, &mask);
    }
    xcb_flush(connection_);
}

} // namespace tolvo

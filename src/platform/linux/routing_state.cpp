#include "platform/linux/routing_state.h"

#include "platform/linux/routing_messages.h"

#include <linux/rtnetlink.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/socket.h>

#include <memory>

namespace tolvo {

namespace {

struct SocketDeleter {
    void operator()(nl_sock* socket) const { nl_socket_free(socket); }
};
using Socket = std::unique_ptr<nl_sock, SocketDeleter>;

int takeMessage(nl_msg* message, void* state) {
    addRoutingMessage(*static_cast<RoutingState*>(state), *nlmsg_hdr(message));
    return NL_OK;
}

bool dump(nl_sock* socket, int requestType, RoutingState& state) {
    rtgenmsg anyFamily{AF_UNSPEC};
    nl_socket_modify_cb(socket, NL_CB_VALID, NL_CB_CUSTOM, takeMessage, &state);
    return nl_send_simple(socket, requestType, NLM_F_DUMP, &anyFamily, sizeof anyFamily) >= 0 &&
           nl_recvmsgs_default(socket) >= 0;
}

} // namespace

std::optional<RoutingState> readRoutingState() {
    const Socket socket(nl_socket_alloc());
    if (!socket || nl_connect(socket.get(), NETLINK_ROUTE) < 0)
        return std::nullopt;
    // The kernel has the next piece of a dump ready at once, so a read that would have to wait is an error.
    nl_socket_set_nonblocking(socket.get());
    nl_socket_enable_msg_peek(socket.get());
    RoutingState state;
    state.generalTables.insert(RT_TABLE_MAIN);
    if (!dump(socket.get(), RTM_GETLINK, state) || !dump(socket.get(), RTM_GETROUTE, state))
        return std::nullopt;
    // A kernel built without routing rules refuses this, and has the main table only.
    dump(socket.get(), RTM_GETRULE, state);
    return state;
}

} // namespace tolvo

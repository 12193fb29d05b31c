#pragma once

#include "platform/linux/routing_state.h"

struct nlmsghdr;

namespace tolvo {

/// Adds the link, the default route or the routing rule of one rtnetlink message to the state. Any other message, and
/// one that is cut short, adds nothing. The message's own length has been checked.
void addRoutingMessage(RoutingState& state, nlmsghdr& message);

} // namespace tolvo

#include "fuzz/require.h"
#include "platform/linux/network_path_evaluation.h"
#include "platform/linux/routing_messages.h"

#include <netlink/msg.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

using namespace tolvo;
using fuzzing::require;

/// The kernel lists a link once.
void keepFirstOfEachIndex(std::vector<NetworkLink>& links) {
    std::vector<NetworkLink> kept;
    for (NetworkLink& link : links) {
        if (std::ranges::find(kept, link.index, &NetworkLink::index) == kept.end())
            kept.push_back(std::move(link));
    }
    links = std::move(kept);
}

} // namespace

/// Any bytes as a datagram of rtnetlink.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Aligned, as the library's buffers are.
    std::vector<std::uint32_t> buffer(size / sizeof(std::uint32_t) + 1);
    std::memcpy(buffer.data(), data, size);
    auto* message = reinterpret_cast<nlmsghdr*>(buffer.data());
    RoutingState state;
    for (int rest = static_cast<int>(size); nlmsg_ok(message, rest); message = nlmsg_next(message, &rest))
        addRoutingMessage(state, *message);
    keepFirstOfEachIndex(state.links);
    const NetworkPath path = evaluateNetworkPath(state, "/nowhere");
    const bool isUsed = path.usesWiFi || path.usesCellular || path.usesWiredEthernet || path.usesOther;
    require(!isUsed || path.status == PathStatus::Satisfied);
    require(path.status != PathStatus::Satisfied || !state.defaultRoutes.empty());
    return 0;
}

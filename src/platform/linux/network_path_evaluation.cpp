#include "platform/linux/network_path_evaluation.h"

#include <net/if.h>
#include <net/if_arp.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

namespace tolvo {

namespace {

/// More than anybody stacks on purpose; it ends a circle that a changing table could show.
constexpr int deepestStack = 8;

constexpr std::array<std::string_view, 6> stackedKinds{"vlan", "macvlan", "macvtap", "ipvlan", "ipvtap", "macsec"};
constexpr std::array<std::string_view, 3> groupingKinds{"bridge", "bond", "team"};

bool contains(const auto& kinds, std::string_view kind) {
    return std::ranges::find(kinds, kind) != kinds.end();
}

/// The device's DEVTYPE, empty for an ordinary one.
std::string deviceType(const std::filesystem::path& device) {
    constexpr std::string_view key = "DEVTYPE=";
    std::ifstream properties(device / "uevent");
    for (std::string line; std::getline(properties, line);) {
        if (line.starts_with(key))
            return line.substr(key.size());
    }
    return {};
}

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

class PathEvaluation {
public:
    PathEvaluation(const RoutingState& state, const std::filesystem::path& sysClassNet)
        : state_(state), sysClassNet_(sysClassNet) {}

    NetworkPath evaluate() {
        for (const DefaultRoute& route : state_.defaultRoutes) {
            const NetworkLink* link = linkWithIndex(route.linkIndex);
            if (!link || !state_.generalTables.contains(route.table) || !isUp(*link))
                continue;
            path_.status = PathStatus::Satisfied;
            addLink(*link, deepestStack);
        }
        return path_;
    }

private:
    static bool isUp(const NetworkLink& link) {
        return (link.flags & IFF_UP) && (link.flags & IFF_RUNNING) && !(link.flags & IFF_LOOPBACK);
    }

    const NetworkLink* linkWithIndex(int index) const {
        const auto found = std::ranges::find(state_.links, index, &NetworkLink::index);
        return found == state_.links.end() ? nullptr : &*found;
    }

    void addLink(const NetworkLink& link, int depth) {
        if (depth == 0)
            return;
        const NetworkLink* lower = linkWithIndex(link.lowerIndex);
        if (contains(stackedKinds, link.kind) && lower && lower != &link)
            addLink(*lower, depth - 1);
        else if (contains(groupingKinds, link.kind))
            addMembers(link, depth);
        else
            addDevice(link);
    }

    /// The members that lead out of the machine count; the ends of containers and virtual machines in a bridge come and
    /// go without a change of the path.
    void addMembers(const NetworkLink& group, int depth) {
        bool leadsOut = false;
        for (const NetworkLink& member : state_.links) {
            if (member.masterIndex != group.index || !isUp(member) || !canLeadOut(member))
                continue;
            leadsOut = true;
            addLink(member, depth - 1);
        }
        path_.usesWiredEthernet |= !leadsOut;
    }

    static bool canLeadOut(const NetworkLink& member) {
        return member.kind.empty() || contains(stackedKinds, member.kind) || contains(groupingKinds, member.kind);
    }

    void addDevice(const NetworkLink& link) {
        const auto device = sysClassNet_ / link.name;
        const std::string type = deviceType(device);
        if (type == "wlan" || isThere(device / "phy80211") || isThere(device / "wireless"))
            path_.usesWiFi = true;
        else if (type == "wwan" || link.kind == "wwan")
            path_.usesCellular = true;
        else if (isEthernet(link) && type != "bluetooth")
            path_.usesWiredEthernet = true;
        else
            path_.usesOther = true;
    }

    /// A container's end of a veth pair is its Ethernet; taps, VXLANs and their like have Ethernet frames but are
    /// tunnels.
    static bool isEthernet(const NetworkLink& link) {
        const bool isWire =
            link.kind.empty() || link.kind == "veth" || link.kind == "dsa" || contains(stackedKinds, link.kind);
        return link.hardwareType == ARPHRD_ETHER && isWire;
    }

    const RoutingState& state_;
    const std::filesystem::path& sysClassNet_;
    NetworkPath path_;
};

} // namespace

NetworkPath evaluateNetworkPath(const RoutingState& state, const std::filesystem::path& sysClassNet) {
    return PathEvaluation(state, sysClassNet).evaluate();
}

} // namespace tolvo

#pragma once

#include "platform/linux/nl80211/netlink_attributes.h"

#include <optional>
#include <string>

namespace tolvo {

/// A network's name is up to 32 bytes of anything. Well-formed UTF-8 is kept as it is; every other byte becomes \xNN.
std::string ssidText(Bytes ssid);

/// The name in the information elements of a beacon or a probe response. Nothing for a hidden network, which sends an
/// empty name or one of zeros only, and where the elements are cut short before the name.
std::optional<std::string> ssidOfInformationElements(Bytes elements);

} // namespace tolvo

#include "platform/linux/nl80211/ssid_text.h"

#include "core/text.h"

#include <algorithm>
#include <string_view>

namespace tolvo {

namespace {

constexpr std::byte ssidElement{0};
constexpr std::size_t longestSSID = 32;

std::string escaped(char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    return {'\\', 'x', digits[value >> 4], digits[value & 15]};
}

bool isHidden(Bytes ssid) {
    return std::ranges::all_of(ssid, [](std::byte byte) { return byte == std::byte{0}; });
}

} // namespace

std::string ssidText(Bytes ssid) {
    std::string_view rest(reinterpret_cast<const char*>(ssid.data()), ssid.size());
    std::string text;
    while (!rest.empty()) {
        const std::size_t length = utf8SequenceLength(rest);
        text += length > 0 ? std::string(rest.substr(0, length)) : escaped(rest.front());
        rest.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::optional<std::string> ssidOfInformationElements(Bytes elements) {
    while (elements.size() >= 2) {
        const std::size_t length = std::to_integer<std::size_t>(elements[1]);
        if (length > elements.size() - 2)
            break;
        const Bytes body = elements.subspan(2, length);
        if (elements[0] == ssidElement) {
            if (isHidden(body) || body.size() > longestSSID)
                return std::nullopt;
            return ssidText(body);
        }
        elements = elements.subspan(2 + length);
    }
    return std::nullopt;
}

} // namespace tolvo

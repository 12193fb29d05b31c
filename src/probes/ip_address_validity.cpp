#include "probes/ip_address_validity.h"

#include <charconv>
#include <system_error>
#include <utility>

namespace tolvo {

namespace {

bool isOctet(std::string_view text) {
    // from_chars knows the minus sign only.
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && value >= 0 && value <= 255;
}

} // namespace

bool isValidIPv4Address(std::string_view text) {
    int octets = 1;
    for (auto dot = text.find('.'); dot != std::string_view::npos; dot = text.find('.')) {
        if (++octets > 4 || !isOctet(text.substr(0, dot)))
            return false;
        text.remove_prefix(dot + 1);
    }
    return octets == 4 && isOctet(text);
}

bool isValidIPv6Address(std::string_view text, const AddressParsing& addressParser) {
    return addressParser.ipv6Address(text.substr(0, text.find('%'))).has_value();
}

bool isValidAddress(std::string_view text, AddressFamily family, const AddressParsing& addressParser) {
    switch (family) {
    case AddressFamily::IPv4:
        return isValidIPv4Address(text);
    case AddressFamily::IPv6:
        return isValidIPv6Address(text, addressParser);
    }
    std::unreachable();
}

} // namespace tolvo

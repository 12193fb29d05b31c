#include "platform/linux/nlohmann_json_reader.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>

namespace tolvo {

namespace {

using nlohmann::json;

JSONMember wholeNumber(double number) {
    // The first real beyond the greatest integer, which itself is no real.
    constexpr double limit = 9223372036854775808.0;
    if (number != std::trunc(number) || number < -limit || number >= limit)
        return JSONOther{};
    return static_cast<std::int64_t>(number);
}

JSONMember member(const json& value) {
    switch (value.type()) {
    case json::value_t::null:
        return JSONNull{};
    case json::value_t::string:
        return value.get<std::string>();
    case json::value_t::number_integer:
        return value.get<std::int64_t>();
    case json::value_t::number_unsigned:
        if (value.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()})
            return JSONOther{};
        return value.get<std::int64_t>();
    case json::value_t::number_float:
        return wholeNumber(value.get<double>());
    case json::value_t::boolean:
    case json::value_t::array:
    case json::value_t::object:
    case json::value_t::binary:
    case json::value_t::discarded:
        return JSONOther{};
    }
    return JSONOther{};
}

} // namespace

std::optional<JSONMembers> NlohmannJSONReader::members(std::string_view document) const {
    constexpr int mostLevels = 64;
    bool isTooDeep = false;
    const auto boundDepth = [&](int depth, json::parse_event_t, json&) {
        isTooDeep = isTooDeep || depth > mostLevels;
        return !isTooDeep;
    };
    const json parsed = json::parse(document, boundDepth, /* allow_exceptions */ false);
    if (isTooDeep || !parsed.is_object())
        return std::nullopt;
    JSONMembers members;
    for (const auto& [key, value] : parsed.items())
        members.emplace(key, member(value));
    return members;
}

} // namespace tolvo

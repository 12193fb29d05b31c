#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace tolvo {

/// Enumerations with a text form, which is their form in the report. A specialisation of rawValueTable<E> lists all
/// cases with their texts, in order; the functions below read it.
template<class E, std::size_t Count>
using RawValueTable = std::array<std::pair<E, std::string_view>, Count>;

template<class E>
inline constexpr int rawValueTable = 0;

template<class E>
constexpr std::string_view rawValue(E value) {
    for (const auto& [candidate, text] : rawValueTable<E>) {
        if (candidate == value)
            return text;
    }
    std::unreachable();
}

/// The case with exactly this text, or nothing.
template<class E>
constexpr std::optional<E> fromRawValue(std::string_view text) {
    for (const auto& [value, candidate] : rawValueTable<E>) {
        if (candidate == text)
            return value;
    }
    return std::nullopt;
}

} // namespace tolvo

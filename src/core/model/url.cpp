#include "core/model/url.h"

#include "core/text.h"

#include <algorithm>

namespace tolvo {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) && std::ranges::all_of(text, [](char c) {
        return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
    });
}

bool hasOnlyURLCharacters(std::string_view text) {
    constexpr std::string_view excluded = "\"<>\\^`{|}";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c <= ' ' || c >= '\x7f' || excluded.find(c) != std::string_view::npos)
            return false;
        if (c == '%' && (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])))
            return false;
    }
    return true;
}

/// The host of an authority, or nothing when its brackets or its port are broken.
std::optional<std::string> hostOf(std::string_view authority) {
    if (const auto at = authority.rfind('@'); at != std::string_view::npos)
        authority.remove_prefix(at + 1);
    std::string_view host;
    std::string_view rest;
    if (authority.starts_with('[')) {
        const auto close = authority.find(']');
        if (close == std::string_view::npos)
            return std::nullopt;
        host = authority.substr(1, close - 1);
        rest = authority.substr(close + 1);
    } else {
        const auto colon = authority.find(':');
        host = authority.substr(0, colon);
        rest = colon == std::string_view::npos ? std::string_view() : authority.substr(colon);
    }
    if (!rest.empty() && (rest.front() != ':' || !std::ranges::all_of(rest.substr(1), isDigit)))
        return std::nullopt;
    return lowerCased(host);
}

} // namespace

std::optional<URL> URL::parse(std::string_view text) {
    if (text.empty() || !hasOnlyURLCharacters(text))
        return std::nullopt;
    URL url{std::string(text)};
    std::string_view rest = text.substr(0, text.find_first_of("?#"));
    if (const auto colon = rest.find(':'); colon < rest.find('/')) {
        if (!isScheme(rest.substr(0, colon)))
            return std::nullopt;
        url.scheme_ = lowerCased(rest.substr(0, colon));
        rest.remove_prefix(colon + 1);
    }
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        const auto authority = rest.substr(0, rest.find('/'));
        auto host = hostOf(authority);
        if (!host)
            return std::nullopt;
        url.host_ = std::move(*host);
        rest.remove_prefix(authority.size());
    }
    if (rest.find_first_of("[]") != std::string_view::npos)
        return std::nullopt;
    url.path_ = rest;
    return url;
}

std::string percentEncoded(std::string_view text, std::string_view alsoPlain) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (isLetter(c) || isDigit(c) || std::string_view("-._~").contains(c) || alsoPlain.contains(c))
            result += c;
        else
            result += {'%', digits[byte >> 4], digits[byte & 0xF]};
    }
    return result;
}

} // namespace tolvo

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvo {

/// A URL reference as it was written, absolute or relative (RFC 3986, section 4.1). Equal when the texts are.
class URL {
public:
    /// Nothing for an empty text and for one with a blank, a control character or a byte outside ASCII, for a scheme
    /// that isn't one, a bracket out of place, or a "%" without its two hexadecimal digits.
    static std::optional<URL> parse(std::string_view text);

    const std::string& text() const { return text_; }
    /// In lower case; empty for a relative reference.
    const std::string& scheme() const { return scheme_; }
    /// In lower case and without user, port and brackets; empty when there is none.
    const std::string& host() const { return host_; }
    const std::string& path() const { return path_; }
    bool isAbsolute() const { return !scheme_.empty(); }

    bool operator==(const URL& other) const { return text_ == other.text_; }

private:
    explicit URL(std::string text) : text_(std::move(text)) {}

    std::string text_;
    std::string scheme_;
    std::string host_;
    std::string path_;
};

/// The bytes of a text as they may stand in a URL: ASCII letters, digits, "-", ".", "_", "~" and the characters given
/// stay, all others become "%" and two hexadecimal digits (RFC 3986, section 2).
std::string percentEncoded(std::string_view text, std::string_view alsoPlain);

} // namespace tolvo

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// A compiled pattern. It takes time in proportion to the text, whatever the text is; bytes that are no UTF-8 are
/// allowed. May be used on any thread.
class RegularExpression {
public:
    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;
    virtual ~RegularExpression() = default;

    /// All groups of the first match, from 1 upward. Nothing without a match, when a group took no part in it, or when
    /// the pattern did not compile.
    virtual std::optional<std::vector<std::string>> firstMatch(std::string_view text) const = 0;

protected:
    RegularExpression() = default;
};

/// Compiles patterns of the common Perl syntax, without any option; options stand in the pattern, as "(?m)".
class RegularExpressionCompiling {
public:
    RegularExpressionCompiling(const RegularExpressionCompiling&) = delete;
    RegularExpressionCompiling& operator=(const RegularExpressionCompiling&) = delete;
    virtual ~RegularExpressionCompiling() = default;

    /// Never null: a pattern that does not compile gives an expression that never matches.
    virtual std::unique_ptr<RegularExpression> compile(std::string_view pattern) const = 0;

protected:
    RegularExpressionCompiling() = default;
};

} // namespace tolvo

#pragma once

#include "platform/services/regular_expression.h"

namespace tolvo {

/// Compiles patterns with RE2, which never backtracks. Its classes, such as \s and \w, are ASCII's.
class Re2RegularExpressionCompiler final : public RegularExpressionCompiling {
public:
    Re2RegularExpressionCompiler() = default;
    std::unique_ptr<RegularExpression> compile(std::string_view pattern) const override;
};

} // namespace tolvo

#include "platform/re2/re2_regular_expression.h"

#include <cstddef>
#include <re2/re2.h>

namespace tolvo {

namespace {

re2::StringPiece piece(std::string_view text) {
    // RE2 marks a group that took no part by a null pointer, so an empty text must have an address of its own.
    return text.empty() ? re2::StringPiece("") : re2::StringPiece(text.data(), text.size());
}

class Re2RegularExpression final : public RegularExpression {
public:
    explicit Re2RegularExpression(std::string_view pattern) : expression_(piece(pattern), RE2::Quiet) {}

    std::optional<std::vector<std::string>> firstMatch(std::string_view text) const override {
        if (!expression_.ok())
            return std::nullopt;
        const int count = expression_.NumberOfCapturingGroups() + 1;
        std::vector<re2::StringPiece> match(static_cast<std::size_t>(count));
        if (!expression_.Match(piece(text), 0, text.size(), RE2::UNANCHORED, match.data(), count))
            return std::nullopt;
        std::vector<std::string> groups;
        groups.reserve(match.size() - 1);
        for (auto group = match.begin() + 1; group != match.end(); ++group) {
            if (group->data() == nullptr)
                return std::nullopt;
            groups.emplace_back(group->data(), group->size());
        }
        return groups;
    }

private:
    RE2 expression_;
};

} // namespace

std::unique_ptr<RegularExpression> Re2RegularExpressionCompiler::compile(std::string_view pattern) const {
    return std::make_unique<Re2RegularExpression>(pattern);
}

} // namespace tolvo

#include "probes/tcp_state_parser.h"

#include <algorithm>

namespace tolvo {

namespace {

// Tables of tens of thousands of rows come several times a second, so a row is looked at from both ends in place.

constexpr std::string_view blanks = " \t\r\v\f";
/// What Unicode calls punctuation in ASCII: symbols such as "+" and "<" are none.
constexpr std::string_view punctuation = "!\"#%&'()*,-./:;?@[\\]_{}";

std::string_view withoutEnds(std::string_view text, std::string_view dropped) {
    const auto first = text.find_first_not_of(dropped);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(dropped) - first + 1);
}

char upperCased(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// The word is in upper case.
bool beginsWithIgnoringCase(std::string_view text, std::string_view word) {
    return text.size() >= word.size() &&
           std::ranges::equal(text.substr(0, word.size()), word, {}, [](char c) { return upperCased(c); });
}

bool equalsIgnoringCase(std::string_view text, std::string_view word) {
    return text.size() == word.size() && beginsWithIgnoringCase(text, word);
}

void countRow(std::string_view line, TCPConnectionStateCounts& counts) {
    const std::string_view row = withoutEnds(line, blanks);
    if (!beginsWithIgnoringCase(row, "TCP"))
        return;
    const auto blank = row.find_last_of(blanks);
    const std::string_view lastToken = blank == std::string_view::npos ? row : row.substr(blank + 1);
    const std::string_view state = withoutEnds(lastToken, punctuation);
    if (equalsIgnoringCase(state, "ESTABLISHED"))
        ++counts.established;
    else if (equalsIgnoringCase(state, "TIME_WAIT"))
        ++counts.timeWait;
    else if (equalsIgnoringCase(state, "CLOSE_WAIT"))
        ++counts.closeWait;
}

} // namespace

TCPConnectionStateCounts parseTCPConnectionStates(std::string_view output) {
    TCPConnectionStateCounts counts;
    while (!output.empty()) {
        const auto end = std::min(output.find('\n'), output.size());
        countRow(output.substr(0, end), counts);
        output.remove_prefix(std::min(end + 1, output.size()));
    }
    return counts;
}

} // namespace tolvo

#pragma once

#include <string>
#include <variant>

namespace tolvo {

/// How a tool's output can fail to say what was asked. No case leaves the probes, so none has a message.
namespace commandParsingError {

struct MissingPattern {
    std::string command;
    std::string expected;
    bool operator==(const MissingPattern&) const = default;
};
struct InvalidNumber {
    std::string command;
    std::string field;
    std::string value;
    bool operator==(const InvalidNumber&) const = default;
};
struct InvalidIPAddress {
    std::string command;
    std::string value;
    bool operator==(const InvalidIPAddress&) const = default;
};

} // namespace commandParsingError

using CommandParsingError = std::variant<commandParsingError::MissingPattern, commandParsingError::InvalidNumber,
                                         commandParsingError::InvalidIPAddress>;

} // namespace tolvo

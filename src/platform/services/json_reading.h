#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace tolvo {

struct JSONNull {};
/// A flag, a number that is no 64-bit integer, an array or an object.
struct JSONOther {};

/// A number without a fractional part is an integer, however it is written.
using JSONMember = std::variant<JSONNull, std::int64_t, std::string, JSONOther>;
using JSONMembers = std::map<std::string, JSONMember, std::less<>>;

/// Reads small JSON documents that anybody may have written.
class JSONReading {
public:
    JSONReading(const JSONReading&) = delete;
    JSONReading& operator=(const JSONReading&) = delete;
    virtual ~JSONReading() = default;

    /// The members of the document's object, with texts in valid UTF-8; of two with one key the last. Nothing for a
    /// document that isn't JSON, is no object, or is nested more than 64 deep.
    virtual std::optional<JSONMembers> members(std::string_view document) const = 0;

protected:
    JSONReading() = default;
};

} // namespace tolvo

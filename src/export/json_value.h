#pragma once

#include "core/model/wall_time.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tolvo {

class JSONValue;

using JSONArray = std::vector<JSONValue>;
/// Sorted by key, as it is written.
using JSONObject = std::map<std::string, JSONValue, std::less<>>;

/// A value of a JSON document. There is no null: what is absent isn't in the object.
class JSONValue {
public:
    JSONValue(bool value) : value_(value) {}
    JSONValue(std::int64_t value) : value_(value) {}
    JSONValue(int value) : value_(std::int64_t{value}) {}
    JSONValue(double value) : value_(value) {}
    JSONValue(std::string value) : value_(std::move(value)) {}
    JSONValue(std::string_view value) : value_(std::string(value)) {}
    JSONValue(const char* value) : value_(std::string(value)) {}
    /// ISO 8601 in UTC, cut to whole seconds: "2026-01-31T09:30:05Z".
    JSONValue(WallTime value);
    JSONValue(JSONArray value) : value_(std::move(value)) {}
    JSONValue(JSONObject value) : value_(std::move(value)) {}

    using Storage = std::variant<bool, std::int64_t, double, std::string, JSONArray, JSONObject>;
    const Storage& storage() const { return value_; }

    bool operator==(const JSONValue&) const = default;

private:
    Storage value_;
};

/// Puts the value under the key if there is one.
template<class T>
void setIfPresent(JSONObject& object, std::string_view key, const std::optional<T>& value) {
    if (value)
        object.insert_or_assign(std::string(key), JSONValue(*value));
}

enum class JSONLayout { Pretty, OneLine };

struct JSONEncodingError {
    std::string message;
    /// The keys that lead to the first number that is not finite.
    std::vector<std::string> codingPath;
    /// The encoded document, when that is what can't be used.
    std::string bytes;

    bool operator==(const JSONEncodingError&) const = default;
};

/// The document as UTF-8: keys in ascending order, the shortest decimals that read back to the same value, the solidus
/// escaped, on one line also DEL and U+0080 to U+009F. Fails for a real that is not finite, and for a text that is not
/// valid UTF-8.
std::expected<std::string, JSONEncodingError> encodeJSON(const JSONValue& value, JSONLayout layout);

} // namespace tolvo

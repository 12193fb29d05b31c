#include "export/json_value.h"

#include <gtest/gtest.h>

#include <limits>

namespace tolvo::testing {
namespace {

std::string oneLine(const JSONValue& value) {
    const auto text = encodeJSON(value, JSONLayout::OneLine);
    return text ? *text : text.error().message;
}

TEST(JSON, NumbersAreTheShortestThatReadBack) {
    EXPECT_EQ(oneLine(JSONArray{0.1, 1e300, -0.0, 5e-324, 12.0, std::numeric_limits<std::int64_t>::min(), 1e21}),
              "[0.1,1e+300,-0,5e-324,12,-9223372036854775808,1e+21]");
    for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_FALSE(encodeJSON(JSONObject{{"a", JSONArray{value}}}, JSONLayout::Pretty));
}

TEST(JSON, TextsAreEscapedAndMustBeUTF8) {
    EXPECT_EQ(oneLine("a\"b\\c/d\n\x01\x1f é"), R"("a\"b\\c\/d\n\u0001\u001f é")");
    EXPECT_EQ(oneLine("\u009b2J\x7f \u00a0"), "\"\\u009b2J\\u007f \u00a0\"");
    EXPECT_EQ(oneLine("\xff"), "Unable to convert diagnostics JSON data to UTF-8 string.");
}

TEST(JSON, DatesAreWholeSecondsInUTC) {
    using namespace std::chrono_literals;
    const WallTime date = std::chrono::sys_days(std::chrono::January / 31 / 2026) + 9h + 30min + 5999ms;
    EXPECT_EQ(oneLine(date), R"("2026-01-31T09:30:05Z")");
    EXPECT_EQ(oneLine(WallTime() - 1ms), R"("1969-12-31T23:59:59Z")");
}

TEST(JSON, KeysAreSortedAndPrettyPrintedByDepth) {
    const JSONObject document{{"b", JSONObject{{"z", 1}, {"a", true}}}, {"a", JSONObject{}}, {"B", JSONArray{}}};
    EXPECT_EQ(encodeJSON(document, JSONLayout::Pretty).value(), "{\n  \"B\" : [],\n  \"a\" : {},\n  \"b\" : {\n"
                                                                "    \"a\" : true,\n    \"z\" : 1\n  }\n}");
}

} // namespace
} // namespace tolvo::testing

#pragma once

#include <string>

namespace tolvo {

/// How the user's locale writes numbers.
struct NumberFormat {
    std::string decimalSeparator = ".";

    bool operator==(const NumberFormat&) const = default;
};

} // namespace tolvo

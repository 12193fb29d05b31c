#pragma once

#include <cstdlib>

namespace tolvo::fuzzing {

/// Ends the run as a crash does when a promise is broken.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace tolvo::fuzzing

#pragma once

namespace tolvo::testing {

/// Counts its living instances, to show that dropped frames leave nothing behind and destroy nothing twice.
class Counted {
public:
    Counted() { ++living(); }
    Counted(const Counted&) { ++living(); }
    Counted(Counted&&) noexcept { ++living(); }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --living(); }

    static int& living() {
        static int count = 0;
        return count;
    }
};

} // namespace tolvo::testing

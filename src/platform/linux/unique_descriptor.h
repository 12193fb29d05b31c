#pragma once

#include <unistd.h>

#include <utility>

namespace tolvo {

/// Owns a file descriptor; -1 is none.
class UniqueDescriptor {
public:
    UniqueDescriptor() = default;
    explicit UniqueDescriptor(int descriptor) : descriptor_(descriptor) {}
    UniqueDescriptor(UniqueDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    UniqueDescriptor& operator=(UniqueDescriptor&& other) noexcept {
        if (this != &other) {
            reset();
            descriptor_ = std::exchange(other.descriptor_, -1);
        }
        return *this;
    }
    ~UniqueDescriptor() { reset(); }

    int get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }
    void reset() {
        if (const int descriptor = std::exchange(descriptor_, -1); descriptor >= 0)
            ::close(descriptor);
    }

private:
    int descriptor_ = -1;
};

} // namespace tolvo

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace tolvo {

/// Gives the bytes of a request's body in pieces: a block, repeated up to a length.
class UploadSource {
public:
    UploadSource(std::shared_ptr<const std::string> block, std::int64_t length)
        : block_(std::move(block)), length_(block_ && !block_->empty() ? std::max<std::int64_t>(length, 0) : 0) {}

    std::int64_t length() const { return length_; }

    /// Fills the room as far as there are bytes, and gives their count.
    std::size_t read(char* target, std::size_t room) {
        const auto count = static_cast<std::size_t>(std::min(static_cast<std::int64_t>(room), length_ - position_));
        for (std::size_t filled = 0; filled < count;) {
            const auto offset = static_cast<std::size_t>(position_) % block_->size();
            const std::size_t size = std::min(count - filled, block_->size() - offset);
            block_->copy(target + filled, size, offset);
            filled += size;
            position_ += static_cast<std::int64_t>(size);
        }
        return count;
    }

    void seek(std::int64_t position) { position_ = std::clamp<std::int64_t>(position, 0, length_); }

private:
    std::shared_ptr<const std::string> block_;
    std::int64_t length_;
    std::int64_t position_ = 0;
};

} // namespace tolvo

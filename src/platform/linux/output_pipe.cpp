#include "platform/linux/output_pipe.h"

#include <fcntl.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <utility>

namespace tolvo {

namespace {

/// An ordinary user may be kept below 1 MiB, for one pipe or for the sum of all; the default of 64 KiB is what stays.
void enlarge(int pipe) {
    constexpr int desiredBytes = 1 << 20;
    constexpr int defaultBytes = 1 << 16;
    for (int bytes = desiredBytes; bytes > defaultBytes; bytes /= 2) {
        if (::fcntl(pipe, F_SETPIPE_SZ, bytes) >= 0)
            return;
    }
}

} // namespace

OutputPipe::OutputPipe(UniqueDescriptor readEnd, UniqueDescriptor writeEnd)
    : readEnd_(std::move(readEnd)), writeEnd_(std::move(writeEnd)) {}

std::optional<OutputPipe> OutputPipe::create() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    OutputPipe pipe{UniqueDescriptor(ends[0]), UniqueDescriptor(ends[1])};
    // Only our end: the child's has a file description of its own.
    if (::fcntl(ends[0], F_SETFL, O_NONBLOCK) != 0)
        return std::nullopt;
    enlarge(ends[0]);
    return pipe;
}

std::string OutputPipe::contents() const {
    int available = 0;
    if (::ioctl(readEnd_.get(), FIONREAD, &available) != 0 || available <= 0)
        return {};
    std::string contents(static_cast<std::size_t>(available), '\0');
    std::size_t size = 0;
    while (size < contents.size()) {
        const ssize_t count = ::read(readEnd_.get(), contents.data() + size, contents.size() - size);
        if (count > 0)
            size += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            break;
    }
    contents.resize(size);
    return contents;
}

} // namespace tolvo

#pragma once

#include "platform/linux/unique_descriptor.h"

#include <optional>
#include <string>

namespace tolvo {

/// What one output of a child goes into. Nobody reads it before the child has ended, so it is as large as the system
/// lets it be, up to 1 MiB.
class OutputPipe {
public:
    /// Nothing, with errno, when the system has none.
    static std::optional<OutputPipe> create();

    int writeEnd() const { return writeEnd_.get(); }
    void closeWriteEnd() { writeEnd_.reset(); }

    /// What is in the pipe at this moment, without waiting: somebody else may hold the other end open, and even write.
    std::string contents() const;

private:
    OutputPipe(UniqueDescriptor readEnd, UniqueDescriptor writeEnd);

    UniqueDescriptor readEnd_;
    UniqueDescriptor writeEnd_;
};

} // namespace tolvo

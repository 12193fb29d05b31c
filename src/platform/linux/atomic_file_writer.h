#pragma once

#include "platform/services/file_writing.h"

namespace tolvo {

/// Writes to a file without a name in the same folder, and gives it the name when it is on the disk: a process that is
/// killed leaves nothing behind. A symbolic link stays one; what it leads to is replaced.
class AtomicFileWriter final : public FileWriting {
public:
    Task<bool> writeAtomically(std::filesystem::path path, std::string bytes) override;
};

} // namespace tolvo

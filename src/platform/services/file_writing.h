#pragma once

#include "core/async/task.h"

#include <filesystem>
#include <string>

namespace tolvo {

/// Writes whole files. Main thread only.
class FileWriting {
public:
    FileWriting(const FileWriting&) = delete;
    FileWriting& operator=(const FileWriting&) = delete;
    virtual ~FileWriting() = default;

    /// Whether the file now holds exactly these bytes. If not, the path is as it was before: no half file is ever seen
    /// there, whenever the program ends. The writing is done off the main thread, and a cancelled task awaits it.
    virtual Task<bool> writeAtomically(std::filesystem::path path, std::string bytes) = 0;

protected:
    FileWriting() = default;
};

} // namespace tolvo

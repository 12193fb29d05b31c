#pragma once

#include "core/async/task.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tolvo {

struct SaveDialogRequest {
    std::string title;
    std::string fileName;
    /// Without the dot; a name that the user gave without an extension gets it, unless a file of that name is there.
    std::string fileExtension;
    /// What such files are, in words.
    std::string fileTypeName;
};

/// Asks the user where to save a file. Main thread only.
class SaveDialog {
public:
    SaveDialog(const SaveDialog&) = delete;
    SaveDialog& operator=(const SaveDialog&) = delete;
    virtual ~SaveDialog() = default;

    /// The chosen path, replacing an existing file having been agreed to; nothing when the user thought better of it.
    /// A cancelled or dropped task takes the dialog away.
    virtual Task<std::optional<std::filesystem::path>> runSaveDialog(SaveDialogRequest request) = 0;

protected:
    SaveDialog() = default;
};

} // namespace tolvo

#pragma once

#include "platform/services/save_dialog.h"

namespace tolvo {

/// Over QFileDialog, without a loop of its own.
class QtSaveDialog final : public SaveDialog {
public:
    Task<std::optional<std::filesystem::path>> runSaveDialog(SaveDialogRequest request) override;
};

} // namespace tolvo

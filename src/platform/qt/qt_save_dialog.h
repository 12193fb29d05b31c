#pragma once

#include "platform/qt/file_chooser_portal.h"

namespace tolvo {

/// The desktop's own through its portal; without one QFileDialog, without a loop of its own.
class QtSaveDialog final : public SaveDialog {
public:
    /// Before the bus connects.
    explicit QtSaveDialog(SessionBus& bus) : portal_(bus) {}

    Task<std::optional<std::filesystem::path>> runSaveDialog(SaveDialogRequest request) override;

private:
    FileChooserPortal portal_;
};

} // namespace tolvo

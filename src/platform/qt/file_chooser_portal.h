#pragma once

#include "platform/qt/session_bus.h"
#include "platform/services/save_dialog.h"

#include <QDBusConnection>

#include <expected>
#include <filesystem>
#include <optional>

namespace tolvo {

/// No portal, none that knows of files, or one that couldn't ask.
struct NoPortal {};

/// The desktop's own save dialog, as its portal shows it (org.freedesktop.portal.FileChooser). Main thread only.
class FileChooserPortal final {
public:
    using Answer = std::expected<std::optional<std::filesystem::path>, NoPortal>;

    /// Before the bus connects.
    explicit FileChooserPortal(SessionBus& bus);

    /// Nothing when the user thought better of it. A cancelled or dropped task takes the dialog away.
    Task<Answer> saveFile(SaveDialogRequest request) const;

private:
    std::optional<QDBusConnection> connection_;
};

} // namespace tolvo

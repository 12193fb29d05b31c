#pragma once

#include "platform/services/screen_geometry.h"

#include <QString>

#include <optional>

namespace tolvo {

/// The frames of windows by name, in a small file. What can't be read isn't there, and what can't be written is
/// forgotten. Main thread only.
class WindowFrameStore final {
public:
    explicit WindowFrameStore(QString path) : path_(std::move(path)) {}

    /// `tolvo/windows.json` in XDG_STATE_HOME if that is an absolute path, else in `.local/state` of the home
    /// directory.
    static QString userPath();

    std::optional<ScreenRect> frame(const QString& name) const;
    void setFrame(const QString& name, const ScreenRect& frame);

private:
    QString path_;
};

} // namespace tolvo

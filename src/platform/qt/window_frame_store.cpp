#include "platform/qt/window_frame_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cmath>

namespace tolvo {

namespace {

/// Four frames take less than 1 KiB; a bigger file is none of ours.
constexpr qint64 longestFile = 65536;
/// Beyond this no window can lie.
constexpr double farthestCoordinate = 32767;

QJsonObject readFrames(const QString& path) {
    QFile file(path);
    // A pipe or a device could be endless, or never answer.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > longestFile)
        return {};
    return QJsonDocument::fromJson(file.read(longestFile)).object();
}

bool isPlausible(const ScreenRect& frame) {
    for (const double value : {frame.x, frame.y, frame.width, frame.height}) {
        if (!(std::abs(value) <= farthestCoordinate))
            return false;
    }
    return frame.width >= 1 && frame.height >= 1;
}

} // namespace

QString WindowFrameStore::userPath() {
    const QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    const QString state = QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/tolvo/windows.json");
}

std::optional<ScreenRect> WindowFrameStore::frame(const QString& name) const {
    const QJsonArray values = readFrames(path_).value(name).toArray();
    if (values.size() != 4)
        return std::nullopt;
    const ScreenRect frame{values[0].toDouble(std::nan("")), values[1].toDouble(std::nan("")),
                           values[2].toDouble(std::nan("")), values[3].toDouble(std::nan(""))};
    return isPlausible(frame) ? std::optional(frame) : std::nullopt;
}

void WindowFrameStore::setFrame(const QString& name, const ScreenRect& frame) {
    QJsonObject frames = readFrames(path_);
    const QJsonArray values{frame.x, frame.y, frame.width, frame.height};
    if (frames.value(name) == values)
        return;
    frames[name] = values;
    QDir().mkpath(QFileInfo(path_).path());
    QSaveFile file(path_);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QJsonDocument(frames).toJson(QJsonDocument::Compact));
        file.commit();
    }
}

} // namespace tolvo

#include "platform/qt/qt_save_dialog.h"

#include "core/async/one_shot.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QPointer>
#include <QStandardPaths>

namespace tolvo {

namespace {

using Path = std::optional<std::filesystem::path>;

/// Goes with its window or with the task that waits for it, whichever goes first.
class OwnedDialog final {
public:
    explicit OwnedDialog(QFileDialog* dialog) : dialog_(dialog) {}
    OwnedDialog(const OwnedDialog&) = delete;
    OwnedDialog& operator=(const OwnedDialog&) = delete;
    ~OwnedDialog() { delete dialog_; }

private:
    QPointer<QFileDialog> dialog_;
};

QFileDialog* makeDialog(const SaveDialogRequest& request) {
    auto* dialog = new QFileDialog(QApplication::activeWindow(), toQString(request.title));
    const QString extension = toQString(request.fileExtension);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(QStringLiteral("%1 (*.%2)").arg(toQString(request.fileTypeName), extension));
    dialog->setDefaultSuffix(extension);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    dialog->setDirectory(QFileInfo::exists(documents) ? documents : QDir::homePath());
    dialog->selectFile(toQString(request.fileName));
    return dialog;
}

Path chosenPath(const QFileDialog& dialog, int result) {
    const QStringList files = dialog.selectedFiles();
    if (result != QDialog::Accepted || files.isEmpty())
        return std::nullopt;
    return std::filesystem::path(QFile::encodeName(files.front()).toStdString());
}

} // namespace

Task<Path> QtSaveDialog::runSaveDialog(SaveDialogRequest request) {
    if (auto answer = co_await portal_.saveFile(request))
        co_return std::move(*answer);
    QFileDialog* shown = makeDialog(request);
    const OwnedDialog owner(shown);
    const OneShot<Path> answer;
    QObject::connect(shown, &QDialog::finished, shown,
                     [answer, shown](int result) { answer.set(chosenPath(*shown, result)); });
    shown->open();
    co_return co_await answer.take();
}

} // namespace tolvo

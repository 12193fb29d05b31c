#include "platform/qt/qt_save_dialog.h"

#include "core/async/one_shot.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

#include <memory>

namespace tolvo {

namespace {

using Path = std::optional<std::filesystem::path>;

std::unique_ptr<QFileDialog> makeDialog(const SaveDialogRequest& request) {
    auto dialog = std::make_unique<QFileDialog>(QApplication::activeWindow(), toQString(request.title));
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
    const auto dialog = makeDialog(request);
    const OneShot<Path> answer;
    QObject::connect(dialog.get(), &QDialog::finished, dialog.get(),
                     [answer, shown = dialog.get()](int result) { answer.set(chosenPath(*shown, result)); });
    dialog->open();
    co_return co_await answer.take();
}

} // namespace tolvo

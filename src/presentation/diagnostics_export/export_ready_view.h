#pragma once

#include "presentation/diagnostics_export/diagnostics_export_content.h"

#include <QWidget>

#include <string>

class QPlainTextEdit;

namespace tolvo {

class DiagnosticsSharePreviewCardView;

/// A finished report: at a glance, what is in it, and its whole text to select from.
class ExportReadyView final : public QWidget {
public:
    explicit ExportReadyView(QWidget* parent = nullptr);

    void show(const DiagnosticsExportContent::Ready& ready);

private:
    QWidget* makeOverview();
    QPlainTextEdit* makePayload();

    DiagnosticsSharePreviewCardView* card_ = nullptr;
    QPlainTextEdit* payload_;
    std::string shownPayload_;
};

} // namespace tolvo

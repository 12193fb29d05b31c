#pragma once

#include "presentation/diagnostics_export/diagnostics_export_content.h"

#include <QWidget>

#include <vector>

class QLabel;

namespace tolvo {

class CheckRowView;
class LinearProgressView;

/// A collection under way: what it does, how far it is, and the list of its stages.
class ExportProgressView final : public QWidget {
public:
    explicit ExportProgressView(QWidget* parent = nullptr);

    void show(const DiagnosticsExportContent::Progress& progress);

private:
    QLabel* message_;
    LinearProgressView* bar_;
    std::vector<CheckRowView*> stages_;
};

} // namespace tolvo

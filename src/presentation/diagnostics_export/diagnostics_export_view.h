#pragma once

#include "presentation/diagnostics_export/diagnostics_export_controller.h"

#include <QScrollArea>

class QHBoxLayout;
class QStackedWidget;

namespace tolvo {

class ExportProgressView;
class ExportReadyView;
class InlineMessageView;
class TextButtonView;

/// The export window's content: the progress of a collection, then the report with what can be done with it. It may
/// close at any time: the collection goes on.
class DiagnosticsExportView final : public QScrollArea, public ContentDisplaying<DiagnosticsExportContent> {
public:
    explicit DiagnosticsExportView(DiagnosticsExportController& controller, QWidget* parent = nullptr);
    ~DiagnosticsExportView() override;

    void show(const DiagnosticsExportContent& content) override;
    QSize minimumSizeHint() const override { return {980, 660}; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QHBoxLayout* makeHeader(QWidget* content);
    QHBoxLayout* makeButtons(QWidget* content);

    DiagnosticsExportController& controller_;
    TextButtonView* regenerate_ = nullptr;
    InlineMessageView* message_;
    QStackedWidget* pages_;
    ExportProgressView* progress_;
    ExportReadyView* ready_;
};

} // namespace tolvo

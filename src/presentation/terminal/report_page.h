#pragma once

#include "presentation/diagnostics_export/diagnostics_export_controller.h"
#include "presentation/terminal/terminal_page.h"

namespace tolvo {

/// The report: it is collected when the page opens, shown at a glance, and saved with Enter.
class ReportPage final : public TerminalPage {
public:
    ReportPage(DiagnosticsExportController& controller, DiagnosticsCollection& collection, TerminalGlyphs glyphs);

    void open() override { controller_.collect(); }
    std::vector<TerminalLine> lines(TerminalSize size) const override;
    void handleKey(const std::string& key) override;

private:
    DiagnosticsExportController& controller_;
    TerminalGlyphs glyphs_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo

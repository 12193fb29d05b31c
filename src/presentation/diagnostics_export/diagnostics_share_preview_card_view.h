#pragma once

#include "presentation/diagnostics_export/diagnostics_share_preview_card.h"
#include "presentation/rows/card_view.h"

#include <vector>

class QLabel;

namespace tolvo {

class HealthCapsuleView;
class MetricRowView;

/// A report at a glance.
class DiagnosticsSharePreviewCardView final : public CardView {
public:
    explicit DiagnosticsSharePreviewCardView(QWidget* parent = nullptr);

    void show(const DiagnosticsSharePreviewCard& card);

private:
    QLabel* name_;
    QLabel* subtitle_;
    HealthCapsuleView* capsule_;
    std::vector<MetricRowView*> metrics_;
    QLabel* footer_;
};

} // namespace tolvo

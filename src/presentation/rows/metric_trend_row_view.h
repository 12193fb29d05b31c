#pragma once

#include "presentation/rows/metric_row_view.h"

namespace tolvo {

/// A title, a trend line and a value.
class MetricTrendRowView final : public MetricRowView {
public:
    explicit MetricTrendRowView(QWidget* parent = nullptr) : MetricRowView(parent) {}

    void show(const MetricTrendRow& row);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    MetricTrendRow row_;
};

} // namespace tolvo

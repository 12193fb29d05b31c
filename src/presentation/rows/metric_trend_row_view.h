#pragma once

#include "presentation/rows/metric_row_view.h"

namespace tolvo {

/// A title, a trend line and a value.
class MetricTrendRowView final : public MetricRowView {
public:
    explicit MetricTrendRowView(QWidget* parent = nullptr);

    void show(const MetricTrendRow& row);
    int heightForWidth(int) const override { return sizeHint().height(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    MetricTrendRow row_;
};

} // namespace tolvo

#pragma once

#include "presentation/rows/metric_rows.h"

#include <QLabel>

namespace tolvo {

/// A title on the leading and a value on the trailing side. For assistive programs it is a label of that name, whose
/// description is the value.
class MetricRowView : public QLabel {
public:
    explicit MetricRowView(QWidget* parent = nullptr);

    void show(const MetricRow& row);
    QSize sizeHint() const override;
    /// Title and value stand one above the other where large type leaves no room for both on a line.
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Mirrored where one reads from right to left.
    QRect placed(const QRect& rect) const;
    void paintTitleAndValue(QPainter& painter, const QRect& title, const QRect& value) const;

private:
    bool needsTwoLines(int width) const;
    int valueWidth() const;

    MetricRow row_;
};

} // namespace tolvo

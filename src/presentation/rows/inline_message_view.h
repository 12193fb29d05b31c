#pragma once

#include "presentation/rows/metric_rows.h"

#include <QLabel>

namespace tolvo {

/// A line of text in a colour, on a ground of the same.
class InlineMessageView final : public QLabel {
public:
    explicit InlineMessageView(QWidget* parent = nullptr);

    void show(const InlineMessageRow& row);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void applyColor();

    InlineMessageRow row_;
};

} // namespace tolvo

#pragma once

#include <QScrollBar>

namespace tolvo {

/// A vertical scroll bar without a ground, and invisible while all is in sight.
class ScrollBarView final : public QScrollBar {
public:
    explicit ScrollBarView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tolvo

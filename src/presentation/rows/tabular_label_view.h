#pragma once

#include <QLabel>

namespace tolvo {

/// One line with all digits equally wide, at the end of its row.
class TabularLabelView final : public QLabel {
public:
    explicit TabularLabelView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tolvo

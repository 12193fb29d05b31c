#pragma once

#include "presentation/rows/tone.h"

#include <QLabel>

namespace tolvo {

/// A state in one coloured word on a tinted ground.
class BadgeView final : public QLabel {
public:
    explicit BadgeView(QWidget* parent = nullptr);

    void show(const Badge& badge);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Badge badge_;
};

} // namespace tolvo

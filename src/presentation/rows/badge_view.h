#pragma once

#include "presentation/rows/tone.h"

#include <QLabel>

#include <string_view>

namespace tolvo {

QFont badgeFont(const QWidget& widget);
/// In the badge's font.
QSize badgeSize(const QFontMetrics& metrics, std::string_view text);
/// The word, in the painter's font, on a ground of its colour.
void paintBadge(QPainter& painter, const QRectF& rect, const Badge& badge, double groundOpacity,
                const QPalette& palette);

/// A state in one coloured word on a tinted ground.
class BadgeView final : public QLabel {
public:
    explicit BadgeView(QWidget* parent = nullptr);

    void show(const Badge& badge);
    /// What the word leaves out, as a tool tip; never markup.
    void setDetail(std::string_view text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Badge badge_;
};

} // namespace tolvo

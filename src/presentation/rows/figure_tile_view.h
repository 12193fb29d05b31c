#pragma once

#include "presentation/rows/figure_tile.h"

#include <QLabel>

namespace tolvo {

/// A card with one large figure. For assistive programs it is a label of the title's name, whose description is the
/// value with its captions.
class FigureTileView final : public QLabel {
public:
    explicit FigureTileView(QWidget* parent = nullptr);

    void show(const FigureTile& tile);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintAccent(QPainter& painter) const;
    void paintTitle(QPainter& painter, const QRect& line) const;
    void paintCaptions(QPainter& painter, QRect line) const;
    QRect placed(const QRect& part) const;

    FigureTile tile_;
};

} // namespace tolvo

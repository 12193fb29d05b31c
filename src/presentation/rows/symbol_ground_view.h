#pragma once

#include "presentation/rows/tone.h"

#include <QWidget>

#include <string>
#include <string_view>

namespace tolvo {

/// A symbol on a ground of its colour.
class SymbolGroundView final : public QWidget {
public:
    /// The side in points.
    explicit SymbolGroundView(int side, QWidget* parent = nullptr);

    void show(std::string_view symbolName, Tone color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string symbolName_;
    Tone color_ = Tone::Primary;
};

} // namespace tolvo

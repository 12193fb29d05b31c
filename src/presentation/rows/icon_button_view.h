#pragma once

#include "presentation/rows/control_view.h"

#include <string>
#include <string_view>

namespace tolvo {

/// A symbol to press, with a name for assistive programs and a tool tip.
class IconButtonView final : public ControlView {
public:
    IconButtonView(std::string_view symbolName, std::string_view accessibilityLabel, std::string_view toolTip,
                   QWidget* parent = nullptr);

    /// The symbol's side in points.
    void setSymbolSize(int size);
    QSize sizeHint() const override;

protected:
    void paintControl(QPainter& painter) override;

private:
    std::string symbolName_;
    int symbolSize_ = 18;
};

} // namespace tolvo

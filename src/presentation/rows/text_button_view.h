#pragma once

#include "presentation/rows/control_view.h"

#include <string>
#include <string_view>

namespace tolvo {

enum class ButtonProminence { Standard, Prominent };

/// A button with words, and perhaps a symbol before them.
class TextButtonView final : public ControlView {
public:
    explicit TextButtonView(std::string_view title, ButtonProminence prominence = ButtonProminence::Standard,
                            QWidget* parent = nullptr);

    void setTitle(std::string_view title);
    void setProminence(ButtonProminence prominence);
    /// Before the words.
    void setSymbol(std::string_view symbolName);
    /// A chevron that points back, for the reader's direction, and no ground.
    void setBackStyle();
    QSize sizeHint() const override;

protected:
    void paintControl(QPainter& painter) override;
    void paintFocus(QPainter& painter) const override;

private:
    void paintGround(QPainter& painter) const;
    void paintSymbolAndTitle(QPainter& painter) const;

    ButtonProminence prominence_;
    std::string symbolName_;
    bool isBack_ = false;
};

} // namespace tolvo

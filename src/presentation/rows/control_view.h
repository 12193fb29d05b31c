#pragma once

#include <QPushButton>

namespace tolvo {

/// A button that a view draws by itself: Enter and Space press it, and a ring shows where the keyboard is, but not
/// after a click.
class ControlView : public QPushButton {
public:
    explicit ControlView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) final;
    void focusInEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

    virtual void paintControl(QPainter& painter) = 0;
    virtual double focusRadius() const;
    virtual void paintFocus(QPainter& painter) const;
    /// How strongly the ground shows that the pointer is there or presses.
    double groundOpacity() const;

private:
    bool hasKeyboardFocus_ = false;
};

} // namespace tolvo

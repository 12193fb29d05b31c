#pragma once

#include <QCheckBox>
#include <QVariantAnimation>

#include <functional>
#include <string_view>

namespace tolvo {

/// A sliding switch. It shows what it was told to show: a click asks, by onToggle, and the new state comes back.
class SwitchView final : public QCheckBox {
public:
    explicit SwitchView(std::string_view accessibilityLabel, QWidget* parent = nullptr);

    std::function<void(bool isOn)> onToggle;

    void show(bool isOn);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void nextCheckState() override { onToggle(!isOn_); }

private:
    bool isOn_ = false;
    QVariantAnimation knob_;
};

} // namespace tolvo

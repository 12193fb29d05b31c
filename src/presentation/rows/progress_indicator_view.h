#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace tolvo {

/// A small wheel that turns while it can be seen.
class ProgressIndicatorView final : public QWidget {
public:
    explicit ProgressIndicatorView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QVariantAnimation turn_;
};

} // namespace tolvo

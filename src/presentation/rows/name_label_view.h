#pragma once

#include <QLabel>

#include <string_view>

namespace tolvo {

/// A tool tip that shows a text from outside as it is.
QString plainToolTip(const QString& text);

/// A name may be anything: it is shown as it is, on one line, cut where the room ends; the tool tip has all of it.
class NameLabelView final : public QLabel {
public:
    explicit NameLabelView(QWidget* parent = nullptr);

    void show(std::string_view name);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tolvo

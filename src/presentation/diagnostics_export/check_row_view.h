#pragma once

#include <QLabel>

#include <string_view>

namespace tolvo {

/// A line of a checklist: a green symbol, or an empty circle for what is still to come, and a text.
class CheckRowView final : public QLabel {
public:
    explicit CheckRowView(std::string_view text, QWidget* parent = nullptr);

    /// The empty circle.
    void showPending(std::string_view accessibilityDescription);
    void showChecked(std::string_view symbolName, std::string_view accessibilityDescription);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showSymbol(std::string_view symbolName, std::string_view accessibilityDescription);

    /// Empty for the circle.
    std::string_view symbolName_;
};

} // namespace tolvo

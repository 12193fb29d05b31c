#pragma once

#include <QGroupBox>

#include <string_view>

class QVBoxLayout;

namespace tolvo {

/// A group of rows on a ground of its own.
class CardView : public QGroupBox {
public:
    /// The title heads the card; an empty one takes no room.
    explicit CardView(std::string_view title, QWidget* parent = nullptr);

    QVBoxLayout& rows() { return *rows_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* rows_;
};

} // namespace tolvo

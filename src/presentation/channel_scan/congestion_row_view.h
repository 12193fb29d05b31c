#pragma once

#include "presentation/channel_scan/channel_scan_content.h"

#include <QLabel>

namespace tolvo {

/// The widths that all rows of a list share, so that their bars can be compared.
struct CongestionColumns {
    int titleWidth = 0;
    int tagsWidth = 0;
    int scoreWidth = 0;
    int countWidth = 0;

    /// Widened to hold the row too.
    CongestionColumns fitting(const ChannelScanCongestionRow& row, const QWidget& widget) const;

    bool operator==(const CongestionColumns&) const = default;
};

/// A channel with its tags, its bar, its score and its networks. For assistive programs it is a label of the channel's
/// name, whose description is the rest.
class CongestionRowView final : public QLabel {
public:
    explicit CongestionRowView(QWidget* parent = nullptr);

    void show(const ChannelScanCongestionRow& row, const CongestionColumns& columns);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect placed(int left, int width) const;
    int paintTags(QPainter& painter, int left) const;
    void paintText(QPainter& painter, const QRect& rect, Qt::Alignment side, const std::string& text) const;

    ChannelScanCongestionRow row_;
    CongestionColumns columns_;
};

} // namespace tolvo

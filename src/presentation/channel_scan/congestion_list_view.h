#pragma once

#include "presentation/channel_scan/channel_scan_content.h"

#include <QWidget>

#include <vector>

class QVBoxLayout;

namespace tolvo {

class CongestionRowView;

/// The band's channels, one below the other, with all bars beginning and ending alike.
class CongestionListView final : public QWidget {
public:
    explicit CongestionListView(QWidget* parent = nullptr);

    void show(const std::vector<ChannelScanCongestionRow>& rows);

private:
    QVBoxLayout* layout_;
    std::vector<ChannelScanCongestionRow> shown_;
    std::vector<CongestionRowView*> rows_;
};

} // namespace tolvo

#include "presentation/channel_scan/congestion_list_view.h"

#include "presentation/channel_scan/congestion_row_view.h"

#include <QVBoxLayout>

#include <algorithm>

namespace tolvo {

CongestionListView::CongestionListView(QWidget* parent) : QWidget(parent), layout_(new QVBoxLayout(this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(0);
}

void CongestionListView::show(const std::vector<ChannelScanCongestionRow>& rows) {
    if (rows == shown_)
        return;
    shown_ = rows;
    while (rows_.size() < rows.size()) {
        rows_.push_back(new CongestionRowView(this));
        layout_->addWidget(rows_.back());
    }
    CongestionColumns columns;
    for (const ChannelScanCongestionRow& row : rows)
        columns = columns.fitting(row, *this);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i]->setVisible(i < rows.size());
        if (i < rows.size())
            rows_[i]->show(rows[i], columns);
    }
}

} // namespace tolvo

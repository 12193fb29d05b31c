#include "presentation/wifi_radar/radar_nearby_list_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/name_label_view.h"
#include "presentation/rows/scroll_bar_view.h"
#include "presentation/rows/style_view.h"

#include <QAbstractListModel>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace tolvo {

namespace {

constexpr int verticalPadding = 6;
constexpr int signalRole = Qt::UserRole;
constexpr int channelRole = Qt::UserRole + 1;

class RowPainter final : public QStyledItemDelegate {
public:
    explicit RowPainter(QWidget& list) : QStyledItemDelegate(&list), list_(list) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {0, nameMetrics().height() + captionMetrics().height() + 2 * verticalPadding};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        painter->save();
        const QRect inside = option.rect.adjusted(RadarNearbyListView::rowInset, verticalPadding,
                                                  -RadarNearbyListView::rowInset, -verticalPadding);
        const QString signal = index.data(signalRole).toString();
        const int signalWidth = nameMetrics().horizontalAdvance(signal) + spacing::item;
        painter->setLayoutDirection(Qt::LayoutDirectionAuto);
        paintLine(*painter, placed(inside.adjusted(0, 0, -signalWidth, 0), inside), Qt::AlignTop | Qt::AlignLeft,
                  index.data().toString(), TextStyle::Headline, Tone::Primary);
        paintLine(*painter, inside, Qt::AlignBottom | Qt::AlignLeft, index.data(channelRole).toString(),
                  TextStyle::Caption, Tone::Secondary);
        painter->setFont(textFont(TextStyle::Body, list_));
        painter->setPen(toneColor(Tone::Secondary, list_.palette()));
        const QRect line(inside.left(), inside.top(), inside.width(), nameMetrics().height());
        drawTabularText(*painter, line, visualAlignment(list_, Qt::AlignVCenter | Qt::AlignRight), signal);
        paintEdge(*painter, option);
        painter->restore();
    }

private:
    QFontMetrics nameMetrics() const { return QFontMetrics(textFont(TextStyle::Headline, list_)); }
    QFontMetrics captionMetrics() const { return QFontMetrics(textFont(TextStyle::Caption, list_)); }
    QRect placed(const QRect& part, const QRect& whole) const {
        return QStyle::visualRect(list_.layoutDirection(), whole, part);
    }

    void paintLine(QPainter& painter, const QRect& rect, Qt::Alignment alignment, const QString& text, TextStyle style,
                   Tone tone) const {
        const QFont font = textFont(style, list_);
        painter.setFont(font);
        painter.setPen(toneColor(tone, list_.palette()));
        painter.drawText(rect, static_cast<int>(visualAlignment(list_, alignment)) | Qt::TextSingleLine,
                         QFontMetrics(font).elidedText(text, Qt::ElideRight, rect.width()));
    }

    /// A hairline between the rows, or the ring where the keyboard is.
    void paintEdge(QPainter& painter, const QStyleOptionViewItem& option) const {
        if (option.state.testFlag(QStyle::State_HasFocus)) {
            paintFocusRing(painter, option.rect, controlRadius, list_.palette().color(QPalette::Highlight));
            return;
        }
        painter.setPen(withOpacity(toneColor(Tone::Primary, list_.palette()), 0.07));
        const QRect line = option.rect.adjusted(RadarNearbyListView::rowInset, 0, -RadarNearbyListView::rowInset, 0);
        painter.drawLine(line.bottomLeft(), line.bottomRight());
    }

    QWidget& list_;
};

} // namespace

class RadarNearbyListView::Rows final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const RadarNearbyNetworkRow& row = rows_[static_cast<std::size_t>(index.row())];
        switch (role) {
        case Qt::DisplayRole:
            return toQString(row.ssid);
        case Qt::ToolTipRole:
            return plainToolTip(toQString(row.ssid));
        case Qt::AccessibleTextRole:
            return toQString(row.ssid + ", " + row.signal + ", " + row.channel);
        case signalRole:
            return toQString(row.signal);
        case channelRole:
            return toQString(row.channel);
        default:
            return {};
        }
    }

    void setRows(const std::vector<RadarNearbyNetworkRow>& rows) {
        if (rows == rows_)
            return;
        const int oldCount = rowCount({});
        const int newCount = static_cast<int>(rows.size());
        if (newCount > oldCount)
            beginInsertRows({}, oldCount, newCount - 1);
        else if (newCount < oldCount)
            beginRemoveRows({}, newCount, oldCount - 1);
        rows_ = rows;
        if (newCount > oldCount)
            endInsertRows();
        else if (newCount < oldCount)
            endRemoveRows();
        if (const int kept = std::min(oldCount, newCount); kept > 0)
            emit dataChanged(index(0), index(kept - 1));
    }

private:
    std::vector<RadarNearbyNetworkRow> rows_;
};

RadarNearbyListView::RadarNearbyListView(QWidget* parent) : QListView(parent), rows_(new Rows(this)) {
    setModel(rows_);
    setItemDelegate(new RowPainter(*this));
    setAccessibleName(toQString(wifi_radar::nearbyTitle));
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new ScrollBarView(this));
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setUniformItemSizes(true);
    setTabKeyNavigation(false);
    viewport()->setAutoFillBackground(false);
}

void RadarNearbyListView::show(const std::vector<RadarNearbyNetworkRow>& rows) {
    rows_->setRows(rows);
}

} // namespace tolvo

#include "presentation/dashboard/dashboard_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/dashboard/dashboard_frame_content.h"
#include "presentation/dashboard/dashboard_header_view.h"
#include "presentation/dashboard/network_header_row_view.h"
#include "presentation/location_permission/location_permission_view.h"
#include "presentation/panel/panel_controller.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/inline_message_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/metric_trend_row_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/switch_view.h"
#include "presentation/rows/text_button_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace tolvo {

namespace {

constexpr std::size_t networkRowCount = 4;
constexpr std::size_t latencyRowCount = 3;

std::vector<MetricTrendRowView*> addTrendRows(CardView& card, std::size_t count) {
    std::vector<MetricTrendRowView*> rows;
    for (std::size_t i = 0; i < count; ++i) {
        rows.push_back(new MetricTrendRowView(&card));
        card.rows().addWidget(rows.back());
    }
    return rows;
}

MetricRowView* addRow(CardView& card) {
    auto* row = new MetricRowView(&card);
    card.rows().addWidget(row);
    return row;
}

void showRows(const std::vector<MetricTrendRowView*>& views, const std::vector<MetricTrendRow>& rows) {
    for (std::size_t i = 0; i < std::min(views.size(), rows.size()); ++i)
        views[i]->show(rows[i]);
}

} // namespace

DashboardView::DashboardView(PanelController& controller, QWidget* parent)
    : QScrollArea(parent), controller_(controller) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    viewport()->setAutoFillBackground(false);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    // Close enough for all groups to be seen whole beside a message.
    column->setContentsMargins(spacing::margin, spacing::inside, spacing::margin, spacing::inside);
    column->setSpacing(spacing::item);
    header_ = new DashboardHeaderView(content);
    header_->onOpenPanel = [this](PanelRoute route) { controller_.openPanel(route); };
    column->addWidget(header_);
    column->addWidget(makeMonitoringRow());
    messages_ = new QVBoxLayout;
    column->addLayout(messages_);
    addGroups(*column);
    location_ = new LocationPermissionView(content);
    location_->onPrimaryAction = [this] { controller_.performPrimaryLocationAction(); };
    column->addWidget(location_);
    column->addStretch();
    column->addWidget(makeQuitRow());
    setWidget(content);
    content->setAutoFillBackground(false);
}

QWidget* DashboardView::makeMonitoringRow() {
    auto* card = new CardView("");
    monitoringLabel_ = makeLabel("", TextStyle::Headline, card);
    monitoringSwitch_ = new SwitchView(dashboardFrameContent.monitoringSwitchLabel, card);
    monitoringSwitch_->onToggle = [this](bool isOn) { controller_.setMonitoringEnabled(isOn); };
    auto* line = new QHBoxLayout;
    line->addWidget(monitoringLabel_, 1);
    line->addWidget(monitoringSwitch_);
    card->rows().addLayout(line);
    return card;
}

void DashboardView::addGroups(QVBoxLayout& column) {
    auto* network = new CardView("");
    network_ = new NetworkHeaderRowView(network);
    network->rows().addWidget(network_);
    networkRows_ = addTrendRows(*network, networkRowCount);
    column.addWidget(network);

    auto* latency = new CardView(dashboardFrameContent.latencyTitle);
    latencyRows_ = addTrendRows(*latency, latencyRowCount);
    packetLoss_ = addRow(*latency);
    column.addWidget(latency);

    auto* dns = new CardView(dashboardFrameContent.dnsTitle);
    dnsDomain_ = addRow(*dns);
    dnsLookup_ = addTrendRows(*dns, 1).front();
    column.addWidget(dns);
}

QWidget* DashboardView::makeQuitRow() {
    auto* row = new QWidget;
    auto* quit = new TextButtonView(dashboardFrameContent.quitTitle, ButtonProminence::Standard, row);
    QObject::connect(quit, &QPushButton::clicked, this, [this] { controller_.quit(); });
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addStretch();
    line->addWidget(quit);
    return row;
}

void DashboardView::show(const DashboardContent& content, const LocationPermissionContent& location) {
    header_->show(content.health);
    monitoringSwitch_->show(content.isMonitoringEnabled);
    monitoringLabel_->setText(toQString(content.monitoringLabel));
    showMessages(content.messages);
    network_->show(content.network);
    showRows(networkRows_, content.networkRows);
    showRows(latencyRows_, content.latencyRows);
    packetLoss_->show(content.packetLossRow);
    dnsDomain_->show(content.dnsDomainRow);
    dnsLookup_->show(content.dnsLookupRow);
    location_->show(location);
}

void DashboardView::showMessages(const std::vector<InlineMessageRow>& messages) {
    if (messages == shownMessages_)
        return;
    shownMessages_ = messages;
    while (QLayoutItem* item = messages_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const InlineMessageRow& message : messages) {
        auto* view = new InlineMessageView(widget());
        messages_->addWidget(view);
        view->show(message);
        view->setVisible(true);
    }
}

} // namespace tolvo

#pragma once

#include "presentation/dashboard/dashboard_content.h"
#include "presentation/location_permission/location_permission_content.h"

#include <QScrollArea>

#include <array>
#include <vector>

class QLabel;
class QVBoxLayout;

namespace tolvo {

class CardView;
class DashboardHeaderView;
class InlineMessageView;
class LocationPermissionView;
class MetricRowView;
class MetricTrendRowView;
class NetworkHeaderRowView;
class PanelController;
class SwitchView;

/// The dashboard: a scrolling column of cards without scroll bars.
class DashboardView final : public QScrollArea {
public:
    explicit DashboardView(PanelController& controller, QWidget* parent = nullptr);

    void show(const DashboardContent& content, const LocationPermissionContent& location);

private:
    using TrendRows = std::vector<MetricTrendRowView*>;

    QWidget* makeMonitoringRow();
    QWidget* makeQuitRow();
    void addGroups(QVBoxLayout& column);
    void showMessages(const std::vector<InlineMessageRow>& messages);

    PanelController& controller_;
    DashboardHeaderView* header_;
    SwitchView* monitoringSwitch_;
    QLabel* monitoringLabel_;
    QVBoxLayout* messages_;
    std::vector<InlineMessageRow> shownMessages_;
    NetworkHeaderRowView* network_;
    TrendRows networkRows_;
    TrendRows latencyRows_;
    MetricRowView* packetLoss_;
    MetricRowView* dnsDomain_;
    MetricTrendRowView* dnsLookup_;
    LocationPermissionView* location_;
};

} // namespace tolvo
